#pragma once

#include "tape/page.h"

#include <QStringList>

namespace tape {

/// The text of a page for a terminal or a file: no line is wider than the page. Attributes are hinted at by a
/// mark at the beginning, pictures and codes are a frame with a title and the data in it.
QStringList toText(const Page& page);
QStringList toText(const Line& line, int width);

} // namespace tape
