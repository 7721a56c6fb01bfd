#include "suggestion.h"

#include "frctltr.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace frctl {

namespace {

constexpr qsizetype shortestBeginning = 3;

/// How many letters must be put in, left out or exchanged.
qsizetype distance(const QString& from, const QString& to)
{
    std::vector<qsizetype> row(static_cast<std::size_t>(to.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (qsizetype line = 0; line < from.size(); ++line) {
        qsizetype diagonal = std::exchange(row[0], line + 1);
        for (std::size_t column = 1; column < row.size(); ++column) {
            const bool isSame = from.at(line) == to.at(static_cast<qsizetype>(column) - 1);
            const qsizetype exchanged = diagonal + (isSame ? 0 : 1);
            diagonal = row[column];
            row[column] = std::min({exchanged, diagonal + 1, row[column - 1] + 1});
        }
    }
    return row.back();
}

} // namespace

QString suggestion(const QString& misspelt, const QStringList& known, const QString& prefix)
{
    QString closest;
    qsizetype least = std::max<qsizetype>(1, misspelt.size() / 3) + 1;
    for (const QString& name : known) {
        const bool isBeginning
            = misspelt.size() >= shortestBeginning && name.startsWith(misspelt, Qt::CaseInsensitive);
        const qsizetype apart = isBeginning ? 1 : distance(misspelt.toLower(), name.toLower());
        if (apart < least) {
            least = apart;
            closest = name;
        }
    }
    return closest.isEmpty() ? QString() : tr("; did you mean %1%2?").arg(prefix, closest);
}

} // namespace frctl
