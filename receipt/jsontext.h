#pragma once

#include "receipterror.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>

namespace receipt {

/// The JSON object in the bytes of a file. Throws ReceiptError for bytes that are not UTF-8, for broken JSON
/// and for a key that stands in one object twice.
QJsonObject jsonFromText(const QByteArray& bytes);
/// The same; the keys that stand twice are appended to the errors, and the last value of each counts.
QJsonObject jsonFromText(const QByteArray& bytes, QList<ReceiptError>& errors);

} // namespace receipt
