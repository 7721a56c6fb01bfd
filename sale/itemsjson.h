#pragma once

#include "markcheck.h"

#include <QJsonArray>
#include <QList>

namespace receipt {
struct Receipt;
}

namespace sale {

/// The positions as they are issued: a discount that does not divide may have made two of one.
QJsonArray itemsJson(const receipt::Receipt& receipt, const QList<MarkCheck>& marks = {});

} // namespace sale
