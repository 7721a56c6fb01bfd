#include "textlines.h"

namespace sale {

namespace {

/// As much of a line, but no half of a character.
qsizetype fittingLength(QStringView line, qsizetype width)
{
    const bool isHalved = width > 1 && width < line.size() && line.at(width).isLowSurrogate();
    return isHalved ? width - 1 : width;
}

} // namespace

QStringList fittedLines(const QStringList& lines, unsigned width)
{
    QStringList result;
    for (const QString& line : lines) {
        QStringView rest = line;
        while (width > 0 && rest.size() > width) {
            const qsizetype length = fittingLength(rest, width);
            result.append(rest.first(length).toString());
            rest = rest.sliced(length);
        }
        result.append(rest.toString());
    }
    return result;
}

} // namespace sale
