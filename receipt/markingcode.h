#pragma once

#include <QString>

namespace receipt {

/// A marking code as it was scanned, out of the plain text or out of base64.
QString markFromText(const QString& text);

} // namespace receipt
