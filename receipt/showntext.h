#pragma once

#include <QString>

namespace receipt {

/// The text for people: control characters are shown by name or number in angle brackets, not sent to a
/// terminal.
QString shownText(const QString& text);

} // namespace receipt
