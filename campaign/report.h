#pragma once

#include "fault.h"
#include "outcome.h"

#include <QMap>
#include <QString>

#include <optional>

/// The figures of a run.
class Report
{
public:
    struct Row
    {
        int injected = 0;
        int salesOk = 0;
        int salesFailed = 0;
        QMap<sale::Outcome, int> verdicts;
    };

    void addInjected(const QList<FaultKind>& kinds);
    /// The faults of a sale that went well; each was survived.
    void addSuccess(const QList<FaultKind>& kinds);
    /// The last fault of a failed sale is the one that it failed of.
    void addFailure(const QList<FaultKind>& kinds, std::optional<sale::Outcome> verdict);
    /// The longest call of each name, in milliseconds of virtual time.
    void addCall(const QString& name, qint64 waited);
    /// A receipt that came to the register with a byte changed, and was taken as it came.
    void addAltered(int step) { m_altered.append(step); }
    /// A closing request that came to the register as another command, and was done.
    void addLost(int step) { m_lost.append(step); }

    void print(const QString& title) const;

private:
    void printCalls() const;

    QMap<FaultKind, Row> m_rows;
    Row m_total;
    int m_untouched = 0;
    QList<int> m_altered;
    QList<int> m_lost;
    QMap<QString, qint64> m_longest;
};
