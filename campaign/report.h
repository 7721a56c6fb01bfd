#pragma once

#include "saleresult.h"

#include <QMap>
#include <QString>

/// The figures of a run.
class Report
{
public:
    struct Row
    {
        int injected = 0;
        int salesOk = 0;
        int salesFailed = 0;
        /// Of those whose closing call failed.
        QMap<sale::Outcome, int> verdicts;
    };

    void addInjected(const QList<FaultKind>& kinds);
    /// The faults of a sale that went well; each was survived.
    void addSuccess(const SaleResult& result);
    /// The last fault of a failed sale is the one that it failed of; it counts in the row of each neighbour
    /// that came by, too.
    void addFailure(const SaleResult& result);
    /// The journal did not know a document of the register.
    void addReview() { ++m_reviews; }
    /// A sale that was told not issued was sold again under its id.
    void addSoldAgain() { ++m_soldAgain; }
    /// A neighbour's sale of the same sums was told to be ours, which was not issued, on a line that was said
    /// to be ours alone.
    void addTakenForOurs() { ++m_takenForOurs; }
    /// Of the failed closes, in thousandths; 0 when there were few.
    int unknownPermille() const;
    /// The longest call of each name, in milliseconds of virtual time.
    void addCall(const QString& name, qint64 waited);
    /// A receipt that came to the register with a byte changed, and was taken as it came.
    void addAltered(int step) { m_altered.append(step); }
    /// A closing request that came to the register as another command, and was done.
    void addLost(int step) { m_lost.append(step); }

    void print(const QString& title) const;

private:
    int failedCloses() const;
    int unknownCloses() const;
    void printCalls() const;

    QMap<FaultKind, Row> m_rows;
    Row m_total;
    int m_untouched = 0;
    int m_reviews = 0;
    int m_soldAgain = 0;
    int m_takenForOurs = 0;
    QList<int> m_altered;
    QList<int> m_lost;
    QMap<QString, qint64> m_longest;
};
