#include "rack/shiftwatch.h"

namespace frserver {

namespace {

constexpr qint64 longestSeconds = (23 * 60 + 30) * 60LL;

} // namespace

ShiftWatch::ShiftWatch(const RegisterSettings& settings)
    : m_rule(settings.shift)
    , m_zone(settings.timeZone)
    , m_from(settings.shiftOpen)
    , m_until(settings.shiftClose)
{
}

void ShiftWatch::open(const QDateTime& since)
{
    m_isOpen = true;
    m_since = since;
}

void ShiftWatch::close()
{
    m_isOpen = false;
    m_since = {};
}

bool ShiftWatch::isWithinHours(const QDateTime& now) const
{
    const QTime time = now.toTimeZone(m_zone).time();
    if (m_from < m_until)
        return m_from <= time && time < m_until;
    // Over midnight, or all day long.
    return m_from <= time || time < m_until;
}

QDateTime ShiftWatch::lastEnd(const QDateTime& now) const
{
    const QDate today = now.toTimeZone(m_zone).date();
    const QDateTime end(today, m_until, m_zone);
    return end <= now ? end : QDateTime(today.addDays(-1), m_until, m_zone);
}

bool ShiftWatch::mayOpen(const QDateTime& now) const
{
    return m_rule == ShiftRule::OnSale || (m_rule == ShiftRule::Scheduled && isWithinHours(now));
}

bool ShiftWatch::isEndDue(const QDateTime& now) const
{
    if (!m_isOpen)
        return false;
    if (m_since.isValid() && m_since.secsTo(now) >= longestSeconds)
        return true;
    if (m_rule != ShiftRule::Scheduled)
        return false;
    return m_since.isValid() ? m_since < lastEnd(now) : !isWithinHours(now);
}

} // namespace frserver
