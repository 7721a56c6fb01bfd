#include "suggestion.h"

#include "frctltr.h"

#include <algorithm>
#include <vector>

namespace frctl {

namespace {

constexpr qsizetype shortestBeginning = 3;

/// Of the distances of all beginnings: by both lengths.
using Table = std::vector<std::vector<qsizetype>>;

/// Two letters that stand beside each other in the wrong order.
bool areSwapped(const QString& from, const QString& to, qsizetype i, qsizetype j)
{
    return i > 1 && j > 1 && from.at(i - 1) == to.at(j - 2) && from.at(i - 2) == to.at(j - 1);
}

qsizetype leastEdits(const Table& table, const QString& from, const QString& to, qsizetype i, qsizetype j)
{
    const auto at = [&table](qsizetype line, qsizetype column) {
        return table[static_cast<std::size_t>(line)][static_cast<std::size_t>(column)];
    };
    if (i == 0 || j == 0)
        return i + j;
    const qsizetype other = from.at(i - 1) == to.at(j - 1) ? 0 : 1;
    const qsizetype edits = std::min({at(i - 1, j - 1) + other, at(i - 1, j) + 1, at(i, j - 1) + 1});
    return areSwapped(from, to, i, j) ? std::min(edits, at(i - 2, j - 2) + 1) : edits;
}

/// How many letters must be put in, left out or exchanged, with each other too.
qsizetype distance(const QString& from, const QString& to)
{
    Table table(static_cast<std::size_t>(from.size()) + 1,
        std::vector<qsizetype>(static_cast<std::size_t>(to.size()) + 1));
    for (qsizetype i = 0; i <= from.size(); ++i) {
        for (qsizetype j = 0; j <= to.size(); ++j)
            table[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]
                = leastEdits(table, from, to, i, j);
    }
    return table.back().back();
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
