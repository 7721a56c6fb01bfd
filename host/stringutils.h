#pragma once

#include "frhost_export.h"

#include <QString>
#include <QStringList>

namespace stringutils {

/// Left and right text on one line of the width, the right one flush right, when they fit with a blank
/// between them; otherwise wrapped over several lines. No line is ever wider than the width.
FRHOST_EXPORT QStringList wrappedString(const QString& left, const QString& right, int width);

/// The text without control characters (0x00 to 0x1F and 0x7F); keepLineFeeds leaves line feeds in.
FRHOST_EXPORT QString removeControlCharacters(const QString& text, bool keepLineFeeds = false);

} // namespace stringutils
