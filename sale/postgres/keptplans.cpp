#include "postgres/keptplans.h"

#include <QStringList>

#include <algorithm>

namespace sale {

bool KeptPlans::isWorthIt(const QString& statement, qsizetype values)
{
    constexpr qsizetype mostValues = 16;
    static const QStringList kinds{QStringLiteral("SELECT "), QStringLiteral("INSERT "),
        QStringLiteral("UPDATE "), QStringLiteral("DELETE "), QStringLiteral("WITH ")};
    return values <= mostValues
        && std::any_of(kinds.cbegin(), kinds.cend(),
            [&statement](const QString& kind) { return statement.startsWith(kind); });
}

QString KeptPlans::preparation(const QString& statement, const QString& name)
{
    const QStringList parts = statement.split(QLatin1Char('?'));
    QString text = QStringLiteral("PREPARE %1 AS ").arg(name) + parts.constFirst();
    for (qsizetype place = 1; place < parts.size(); ++place)
        text += QLatin1Char('$') + QString::number(place) + parts.at(place);
    return text;
}

bool KeptPlans::takeAge()
{
    // A worker would make them anew as often as it uses them.
    if (++m_uses < fewestUses || !m_age.hasExpired())
        return false;
    m_uses = 0;
    m_age.setRemainingTime(longestKept);
    return true;
}

void KeptPlans::clear()
{
    m_names.clear();
    m_uses = 0;
    m_age.setRemainingTime(longestKept);
}

} // namespace sale
