#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QVariant>

namespace sale {

/// The form in which the journal keeps what is noted: text; null for what is empty, so that a note leaves
/// what was noted before.
QVariant storedJson(const QJsonObject& json);
QVariant storedJson(const QJsonArray& json);
/// The same text, also of what is empty.
QString wholeJson(const QJsonObject& json);

} // namespace sale
