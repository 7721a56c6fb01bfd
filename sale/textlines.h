#pragma once

#include <QStringList>

namespace sale {

/// The register cuts a line that is longer than its paper is wide (characters, 0 where it does not tell):
/// each is continued on the next line here. No half of a character stands alone.
QStringList fittedLines(const QStringList& lines, unsigned width);

} // namespace sale
