#pragma once

#include <QByteArray>
#include <QJsonObject>

namespace receipt {

/// The JSON object in the bytes of a file. Throws ReceiptError for bytes that are not UTF-8, for broken JSON
/// and for a key that stands in one object twice.
QJsonObject jsonFromText(const QByteArray& bytes);

} // namespace receipt
