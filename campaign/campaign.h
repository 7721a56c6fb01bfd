#pragma once

#include "host.h"
#include "sqlitestore.h"

#include <QHash>

#include <memory>

/// A run of many sales on one protocol. Every few hundred sales driver, line and register are new, so that a
/// part of the run can be repeated.
class Campaign
{
public:
    struct Plan
    {
        Protocol protocol = Protocol::Hex;
        quint64 seed = 1;
        int from = 0;
        int sales = 1000;
        Neighbour neighbour = Neighbour::None;
        Hazards hazards = {};
    };

    explicit Campaign(const Plan& plan);
    ~Campaign();

    /// False after a violation, which it prints.
    bool run();

private:
    void beginPeriod();
    void endPeriod();
    void sellOnce(int step);
    /// Under the same id: only what was not issued is sold, and that goes well over a good line.
    void sellAgain(int step, const receipt::Receipt& receipt, const SaleResult& failed);
    void check(int step, const SaleResult& result, qint64 total);
    void checkIssued(int step, const SaleResult& result, qint64 total);
    void checkTimes(int step, sale::Outcome outcome) const;
    void checkAll() const;
    bool isUnknownRare() const;
    void print(qint64 milliseconds) const;
    bool mayBeAltered(const SaleResult& result) const;
    bool mayBeTakenForOurs(const SaleResult& result) const;
    void stored(const QJsonObject& entry);

    const Plan m_plan;
    Report m_report;
    std::unique_ptr<Rig> m_rig;
    std::unique_ptr<sale::SqliteStore> m_journal;
    std::unique_ptr<Host> m_host;
    int m_step = 0;
    bool m_spared = false;
    /// How often the sale of that step stands in the register's journal in this period.
    QHash<int, int> m_stored;
    QHash<int, sale::Outcome> m_verdicts;
    qint64 m_storedTotal = 0;
    QList<qint64> m_memory;
};
