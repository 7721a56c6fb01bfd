#include "tape/wrapping.h"

namespace tape {

QStringList wrapped(const QString& text, qsizetype width)
{
    QStringList pieces;
    for (qsizetype start = 0; start < text.size() || start == 0; start += width)
        pieces.append(text.mid(start, width));
    return pieces;
}

} // namespace tape
