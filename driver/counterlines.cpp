#include "counterlines.h"

#include "decimals.h"

QStringList counterLines(const QMap<int, double>& sumsByKind)
{
    QStringList lines;
    for (auto entry = sumsByKind.cbegin(); entry != sumsByKind.cend(); ++entry) {
        lines.append(QStringLiteral(" тип %1 - %2").arg(entry.key()).arg(moneyText(entry.value())));
    }
    return lines;
}
