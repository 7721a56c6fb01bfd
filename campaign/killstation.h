#pragma once

#include "hostcommand.h"
#include "hostprocess.h"
#include "killcounts.h"
#include "random.h"
#include "registerprocess.h"

#include <QFile>
#include <QJsonObject>
#include <QList>
#include <QStringList>

#include <atomic>

/// A register whose hosts are ended at work and called again, until each sale has come to its end.
class KillStation
{
public:
    /// One protocol, a folder of its own, and the journal that its hosts share with those of other registers.
    struct Plan
    {
        int number = 0;
        quint64 seed = 1;
        QString protocol;
        QString emulator;
        QString folder;
        /// Without its port.
        HostCommand host;
    };
    struct Counts
    {
        KillCounts sales;
        KillCounts others;
        int salesMade = 0;
        int othersMade = 0;
        int calls = 0;
        int mostCalls = 0;
        /// Hosts that had ended before their moment came.
        int tooLate = 0;
        /// Hosts that got a second signal while they cleaned up.
        int twice = 0;
        /// Sales that were issued before a host could tell.
        int found = 0;
        /// What calls told that nobody ended and that did not sell.
        QStringList failures;

        int kills() const { return sales.kills() + others.kills(); }
        void add(const Counts& other);
    };

    explicit KillStation(const Plan& plan);
    /// Ends so many hosts, or stops; throws Violation.
    void run(int kills, const std::atomic_bool& isStopped);
    const Counts& counts() const { return m_counts; }
    /// All that the register has made, as its own journal tells.
    const QList<QJsonObject>& documents() const { return m_documents; }
    QString port() const { return m_host.port; }

private:
    void sell();
    /// Cash in or a Z report, which have no name of their own: the next call finds out what has become of it.
    void makeOther();
    /// Calls the host for that sale until it has told that it is issued.
    HostAnswer callUntilIssued(const QStringList& command);
    bool isIssued(const HostAnswer& told, bool wasEnded);
    /// Calls a host that is ended at a moment drawn.
    HostAnswer callAndEnd(const QStringList& command, KillCounts& counts);
    HostAnswer call(const QStringList& command) const;
    void waitForMoment(HostProcess& host);
    /// False when the host has ended before.
    bool end(HostProcess& host, KillCounts& counts);
    /// The documents of the register that came since the last time, without the opening of shifts.
    QList<QJsonObject> newDocuments();
    void checkSale(int sale, const QString& id, const HostAnswer& told);

    Plan m_plan;
    Random m_random;
    RegisterProcess m_register;
    HostCommand m_host;
    QFile m_journal;
    QList<QJsonObject> m_documents;
    Counts m_counts;
};
