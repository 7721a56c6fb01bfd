#pragma once

#include "hostcommand.h"
#include "killstation.h"
#include "processplan.h"

#include <QMutex>
#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <vector>

/// Sales by real programs that are ended again and again in the middle of their work, at several registers at
/// once that share one journal; what the journal has is compared with what the registers have.
class HostKills
{
public:
    explicit HostKills(const ProcessPlan& plan);
    /// False after a violation, which is printed.
    bool run();

private:
    /// What one register and its hosts came to.
    struct Result
    {
        QString protocol;
        QString port;
        QList<QJsonObject> documents;
        KillStation::Counts counts;
    };

    /// In a thread of its own.
    void work(const KillStation::Plan& plan);
    KillStation::Plan planOf(int number) const;
    void report(const QString& folder, const char* violation);
    void checkJournal();
    void print() const;

    ProcessPlan m_plan;
    QTemporaryDir m_folder;
    HostCommand m_host;
    std::vector<Result> m_results;
    std::atomic_bool m_isStopped = false;
    QMutex m_shared;
};
