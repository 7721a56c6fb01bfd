#include "hostkills.h"

#include "hostjournal.h"

#include <QDir>
#include <QJsonDocument>
#include <QThread>

#include <cstdio>
#include <map>
#include <memory>

namespace {

/// Hosts mostly wait, for a line that their forerunner left busy.
constexpr int stationCount = 8;

} // namespace

HostKills::HostKills(const ProcessPlan& plan)
    : m_plan(plan)
    , m_host{plan.frctl, plan.plugin, {}, m_folder.filePath(QStringLiteral("sales.sqlite")), {}}
{
}

bool HostKills::run()
{
    std::vector<std::unique_ptr<QThread>> threads;
    for (int number = 1; number <= stationCount; ++number) {
        threads.emplace_back(QThread::create([this, number] { work(planOf(number)); }));
        threads.back()->start();
    }
    for (const auto& thread : threads)
        thread->wait();
    if (!m_isStopped)
        checkJournal();
    if (!m_isStopped)
        print();
    m_folder.setAutoRemove(!m_isStopped);
    return !m_isStopped;
}

KillStation::Plan HostKills::planOf(int number) const
{
    const QString folder = m_folder.filePath(QString::number(number));
    QDir().mkpath(folder);
    const QString protocol = number % 2 == 1 ? QStringLiteral("HEX") : QStringLiteral("XML");
    return {number, m_plan.seed, protocol, m_plan.emulator, folder, m_host};
}

void HostKills::work(const KillStation::Plan& plan)
{
    const int share = (m_plan.count + plan.number - 1) / stationCount;
    try {
        KillStation station(plan);
        station.run(share, m_isStopped);
        const QMutexLocker locker(&m_shared);
        m_results.push_back({plan.protocol, station.port(), station.documents(), station.counts()});
    } catch (const std::exception& violation) {
        report(plan.folder, violation.what());
    }
}

void HostKills::report(const QString& folder, const char* violation)
{
    const QMutexLocker locker(&m_shared);
    m_isStopped = true;
    std::printf("VIOLATION (--seed %llu), files in %s: %s\n", static_cast<unsigned long long>(m_plan.seed),
        qPrintable(folder), violation);
}

void HostKills::checkJournal()
{
    const HostAnswer exported = HostProcess(m_host.frctl,
        {QStringLiteral("--journal"), m_host.journal, QStringLiteral("journal"), QStringLiteral("export")})
                                    .end();
    QList<QJsonObject> records;
    for (const QByteArray& line : exported.output().split('\n'))
        records.append(QJsonDocument::fromJson(line).object());
    try {
        for (const Result& result : m_results)
            hostjournal::checkAll(records, result.documents, result.port);
    } catch (const std::exception& violation) {
        report(m_folder.path(), violation.what());
    }
}

void HostKills::print() const
{
    KillStation::Counts all;
    std::map<QString, KillCounts> sales;
    for (const Result& result : m_results) {
        all.add(result.counts);
        sales[result.protocol].add(result.counts.sales);
    }
    std::printf("hosts ended: %d, no violation; in %d sales and %d other documents at %d registers\n",
        all.kills(), all.salesMade, all.othersMade, stationCount);
    for (const auto& [protocol, counts] : sales)
        counts.print(QStringLiteral("\nhosts that sold over ") + protocol);
    all.others.print(QStringLiteral("\nhosts that put cash in or closed the shift"));
    std::printf("\ncalls of the hosts that sold: %d, %d at most for one sale\n", all.calls, all.mostCalls);
    std::printf("sales that a later call found issued: %d\n", all.found);
    std::printf("hosts that were ended a second time while they cleaned up: %d\n", all.twice);
    std::printf("hosts that had ended before their moment: %d\n", all.tooLate);
    std::printf(
        "calls that nobody ended and that did not sell: %lld\n", static_cast<long long>(all.failures.size()));
    for (const QString& failure : all.failures.mid(0, 5))
        std::printf("  %s\n", qPrintable(failure));
}
