#pragma once

#include "markcheck.h"

#include <QJsonArray>
#include <QList>

namespace receipt {
struct Receipt;
}

namespace sale {

/// The positions of a receipt as they are issued (a discount that does not divide may have made two of one),
/// with what the register said of their marking codes, as answers have them.
QJsonArray itemsJson(const receipt::Receipt& receipt, const QList<MarkCheck>& marks = {});

} // namespace sale
