#include "peers/losswatch.h"

namespace frserver {

using std::chrono::milliseconds;

LossWatch::LossWatch(milliseconds longestGap, const Clock& clock)
    : m_longestGap(longestGap)
    , m_clock(clock)
{
}

void LossWatch::look(const QStringList& lost)
{
    const milliseconds now = m_clock();
    if (m_seen && now - *m_seen > m_longestGap)
        m_since.clear();
    m_seen = now;
    QHash<QString, milliseconds> since;
    for (const QString& name : lost)
        since.insert(name, m_since.value(name, now));
    m_since = since;
}

void LossWatch::forget()
{
    m_since.clear();
}

bool LossWatch::isLostFor(const QString& registerName, milliseconds time) const
{
    const auto since = m_since.constFind(registerName);
    return since != m_since.cend() && m_seen.value_or(*since) - *since >= time;
}

} // namespace frserver
