#include "rack/shiftwatch.h"

#include <algorithm>

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

void ShiftWatch::open(const QDateTime& since, const QDateTime& now, qint64 steady)
{
    m_isTold = true;
    // A clock that was put back in between would make it younger.
    if (m_isOpen && since == m_since)
        return;
    m_isOpen = true;
    m_since = since;
    m_secondsThen = std::max<qint64>(0, since.secsTo(now));
    m_told = steady;
}

void ShiftWatch::close()
{
    m_isTold = true;
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

/// By either clock: one may have jumped, the other one stands still while the computer sleeps. Too early
/// harms nobody, too late stops the sale.
qint64 ShiftWatch::age(const QDateTime& now, qint64 steady) const
{
    const qint64 counted = m_secondsThen + (steady - m_told) / 1000;
    return std::max(counted, m_since.secsTo(now));
}

bool ShiftWatch::isEndDue(const QDateTime& now, qint64 steady) const
{
    if (!m_isOpen)
        return false;
    if (age(now, steady) >= longestSeconds)
        return true;
    return m_rule == ShiftRule::Scheduled && m_since < lastEnd(now);
}

} // namespace frserver
