#pragma once

#include "configuration/registersettings.h"

#include <QDateTime>

#include <optional>

namespace frserver {

/// What is known of a register's shift, and what its rule makes of that.
class ShiftWatch
{
public:
    explicit ShiftWatch(const RegisterSettings& settings);

    /// From now on its age is counted in milliseconds that never jump, too.
    void open(const QDateTime& since, const QDateTime& now, qint64 steady);
    void close();
    /// The register does not tell any more. A report that was due stays so.
    void forget() { m_isTold = false; }
    bool isOpen() const { return m_isOpen; }
    /// Nothing while nobody knows.
    std::optional<bool> told() const { return m_isTold ? std::optional(m_isOpen) : std::nullopt; }
    const QDateTime& since() const { return m_since; }

    /// A document that finds the shift closed may open it.
    bool mayOpen(const QDateTime& now) const;
    /// The report that closes it goes before documents that were not begun: at the end of scheduled hours,
    /// and half an hour before a register sells no more in the shift, whatever the rule.
    bool isEndDue(const QDateTime& now, qint64 steady) const;

private:
    bool isWithinHours(const QDateTime& now) const;
    qint64 age(const QDateTime& now, qint64 steady) const;
    QDateTime lastEnd(const QDateTime& now) const;

    const ShiftRule m_rule;
    const QTimeZone m_zone;
    const QTime m_from;
    const QTime m_until;
    bool m_isTold = false;
    bool m_isOpen = false;
    QDateTime m_since;
    /// How old it was when that was told, and when.
    qint64 m_secondsThen = 0;
    qint64 m_told = 0;
};

} // namespace frserver
