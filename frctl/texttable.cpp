#include "texttable.h"

#include <algorithm>

namespace frctl {

QStringList textTable(const QList<QStringList>& rows)
{
    QStringList lines(rows.size());
    const qsizetype columns = rows.isEmpty() ? 0 : rows.constFirst().size();
    for (qsizetype column = 0; column < columns; ++column) {
        qsizetype width = 1;
        for (const QStringList& row : rows)
            width = std::max(width, row.at(column).size());
        for (qsizetype row = 0; row < rows.size(); ++row) {
            const QString& cell = rows.at(row).at(column);
            lines[row] += (cell.isEmpty() ? QStringLiteral("-") : cell).leftJustified(width + 2);
        }
    }
    for (QString& line : lines)
        line = line.trimmed();
    return lines;
}

} // namespace frctl
