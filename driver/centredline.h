#pragma once

#include <QString>

/// "%1 %2 %1": the text between two runs of the fill, for the headings of printouts. The runs shrink to
/// nothing when the text is as wide as the line or wider.
QString centredLine(const QString& text, QChar fill, int width);
