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
/// What the register said of marked goods, as the journal keeps it: "code" and "result" of each.
QJsonArray markChecksJson(const QList<MarkCheck>& marks);
QList<MarkCheck> markChecksOf(const QJsonArray& json);

} // namespace sale
