#pragma once

#include <QByteArray>
#include <QString>

namespace tape {

/// A picture of black dots on white paper.
struct Picture
{
    /// What it is, for a tape that cannot show it.
    QString title;
    /// Dots.
    int width = 0;
    int height = 0;
    /// Row by row from the top, each begins with a byte of its own; the highest bit is the leftmost dot, and
    /// 1 is black.
    QByteArray rows;

    static qsizetype rowSize(int width) { return (width + 7) / 8; }
    /// There are dots, and not more than any printer takes.
    static bool isSize(qint64 width, qint64 height);
    /// Its rows have the size that they must have.
    bool isWhole() const { return isSize(width, height) && rows.size() == rowSize(width) * height; }

    bool operator==(const Picture&) const = default;
};

} // namespace tape
