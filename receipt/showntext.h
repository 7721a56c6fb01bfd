#pragma once

#include <QString>

namespace receipt {

/// The text for people: control characters are shown, not sent to a terminal; the group separator of marking
/// codes as <GS>.
QString shownText(const QString& text);

} // namespace receipt
