#include "counterlines.h"

QStringList counterLines(const QMap<int, double>& sumsByKind)
{
    QStringList lines;
    for (auto entry = sumsByKind.cbegin(); entry != sumsByKind.cend(); ++entry) {
        lines.append(
            QStringLiteral(" тип %1 - %2").arg(entry.key()).arg(QString::number(entry.value(), 'f', 2)));
    }
    return lines;
}
