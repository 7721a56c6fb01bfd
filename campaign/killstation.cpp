#include "killstation.h"

#include "hostjournal.h"
#include "numberedsale.h"
#include "portlock.h"
#include "salemoment.h"
#include "violation.h"

#include <QJsonDocument>
#include <QThread>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace {

bool isTakenAlone(const QString& port)
{
    const int line = ::open(QFile::encodeName(port).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    int isAlone = 1;
    ::ioctl(line, TIOCGEXCL, &isAlone);
    ::close(line);
    return isAlone != 0;
}

void checkPortIsFree(const QString& port)
{
    devices::PortLock lock;
    expect(lock.take(port), QStringLiteral("the port is not free: process %1").arg(lock.holder()));
    // The next host is to find it as the last one left it.
    if (!lock.wasLeftBusy())
        lock.leaveIdle();
    // The register sees a moment later that the host has closed it.
    constexpr int looks = 1000;
    for (int look = 1; isTakenAlone(port); ++look) {
        expect(look < looks, QStringLiteral("nobody else can open the port"));
        QThread::msleep(1);
    }
}

void pauseUpTo(Random& random, int microseconds)
{
    QThread::usleep(static_cast<unsigned long>(random.below(microseconds)));
}

} // namespace

void KillStation::Counts::add(const Counts& other)
{
    sales.add(other.sales);
    others.add(other.others);
    salesMade += other.salesMade;
    othersMade += other.othersMade;
    calls += other.calls;
    mostCalls = std::max(mostCalls, other.mostCalls);
    tooLate += other.tooLate;
    twice += other.twice;
    found += other.found;
    failures += other.failures;
}

KillStation::KillStation(const Plan& plan)
    : m_plan(plan)
    , m_random(plan.seed, static_cast<quint64>(plan.number))
    , m_register(plan.emulator, plan.folder, RegisterProcess::Line::Terminal)
    , m_host(plan.host)
    , m_journal(m_register.journal())
{
    m_host.port = m_register.address();
}

void KillStation::run(int kills, const std::atomic_bool& isStopped)
{
    constexpr int othersPermille = 150;
    m_register.start();
    while (m_counts.kills() < kills && !isStopped) {
        if (m_random.chance(othersPermille))
            makeOther();
        sell();
    }
    m_register.kill();
}

void KillStation::sell()
{
    constexpr int salesOfStation = 1'000'000;
    const int sale = m_plan.number * salesOfStation + ++m_counts.salesMade;
    const QString id = QStringLiteral("killed-%1").arg(sale);
    const QString file = m_plan.folder + QStringLiteral("/receipt.json");
    numberedsale::write(file, sale);
    checkSale(sale, id, callUntilIssued({QStringLiteral("--id"), id, QStringLiteral("sell"), file}));
}

HostAnswer KillStation::callUntilIssued(const QStringList& command)
{
    constexpr int mostCalls = 20;
    constexpr int mostKills = 5;
    constexpr int againPermille = 350;
    for (int calls = 1; calls <= mostCalls; ++calls) {
        const bool isToEnd = calls == 1 || (calls <= mostKills && m_random.chance(againPermille));
        const HostAnswer told = isToEnd ? callAndEnd(command, m_counts.sales) : call(command);
        ++m_counts.calls;
        m_counts.mostCalls = std::max(m_counts.mostCalls, calls);
        if (isIssued(told, isToEnd))
            return told;
    }
    throw Violation("a sale does not come to its end");
}

bool KillStation::isIssued(const HostAnswer& told, bool wasEnded)
{
    expect(told.status() != HostAnswer::WrongUsage && told.status() != HostAnswer::Unknown,
        QStringLiteral("a sale is not settled: ") + told.text());
    m_counts.found += told.status() == HostAnswer::FoundIssued ? 1 : 0;
    // With a closed pipe nobody heard the answer.
    if (told.isIssued() && (told.status() == HostAnswer::Done || told.status() == HostAnswer::FoundIssued))
        return true;
    if (!wasEnded)
        m_counts.failures.append(told.text());
    return false;
}

void KillStation::makeOther()
{
    ++m_counts.othersMade;
    const bool isCash = m_random.chance(500);
    const QString kind = isCash ? QStringLiteral("cashIn") : QStringLiteral("zReport");
    callAndEnd(isCash ? QStringList{QStringLiteral("cash-in"), QString::number(m_counts.othersMade)}
                      : QStringList{QStringLiteral("z-report")},
        m_counts.others);
    const HostAnswer settled = call({QStringLiteral("journal"), QStringLiteral("settle")});
    expect(settled.status() == HostAnswer::Done, QStringLiteral("not settled: ") + settled.text());
    const QList<QJsonObject> made = newDocuments();
    expect(made.isEmpty() || (made.size() == 1 && hostjournal::kindOf(made.constFirst()) == kind),
        QStringLiteral("%1 made %2 documents").arg(kind).arg(made.size()));
}

HostAnswer KillStation::callAndEnd(const QStringList& command, KillCounts& counts)
{
    m_register.beginTrace();
    HostProcess host(m_host.frctl, m_host.arguments(m_plan.protocol, command));
    waitForMoment(host);
    if (!end(host, counts))
        ++m_counts.tooLate;
    const HostAnswer told = host.end();
    checkPortIsFree(m_host.port);
    return told;
}

HostAnswer KillStation::call(const QStringList& command) const
{
    return HostProcess(m_host.frctl, m_host.arguments(m_plan.protocol, command)).end();
}

void KillStation::waitForMoment(HostProcess& host)
{
    constexpr int earlyPermille = 150;
    // By then a host that began on an idle line has asked the register for the first time.
    constexpr int longestStart = 80'000;
    if (m_random.chance(earlyPermille))
        return pauseUpTo(m_random, longestStart);
    SaleMoment::draw(m_random, m_plan.protocol).wait(host, m_register, m_random);
}

bool KillStation::end(HostProcess& host, KillCounts& counts)
{
    constexpr int signalNumbers[] = {SIGKILL, SIGTERM, SIGINT, SIGHUP};
    constexpr int twicePermille = 200;
    constexpr int longestPause = 20'000;
    const auto way = static_cast<KillCounts::Way>(m_random.below(KillCounts::ways));
    m_register.listen();
    const KillCounts::Phase phase = KillCounts::phaseOf(m_register.trace());
    if (way == KillCounts::ClosedPipe ? !host.closeOutput() : !host.signal(signalNumbers[way]))
        return false;
    counts.note(way, phase);
    if (!m_random.chance(twicePermille))
        return true;
    pauseUpTo(m_random, longestPause);
    m_counts.twice += host.signal(SIGTERM) ? 1 : 0;
    return true;
}

QList<QJsonObject> KillStation::newDocuments()
{
    if (!m_journal.isOpen())
        m_journal.open(QIODevice::ReadOnly);
    QList<QJsonObject> documents;
    for (QByteArray line = m_journal.readLine(); !line.isEmpty(); line = m_journal.readLine())
        documents.append(QJsonDocument::fromJson(line).object());
    m_documents += documents;
    // Other documents make it on their way.
    documents.removeIf([](const QJsonObject& document) {
        return hostjournal::kindOf(document) == QStringLiteral("openShift");
    });
    return documents;
}

void KillStation::checkSale(int sale, const QString& id, const HostAnswer& told)
{
    const QList<QJsonObject> made = newDocuments();
    expect(made.size() == 1 && numberedsale::isDocument(made.constFirst(), sale),
        QStringLiteral("%1 made %2 documents: ").arg(id).arg(made.size()) + told.text());
    const qint64 number = made.constFirst().value(QStringLiteral("number")).toInteger();
    expect(told.documentNumber() == number, QStringLiteral("it is document %1: ").arg(number) + told.text());
    const HostAnswer shown = call({QStringLiteral("journal"), QStringLiteral("show"), id});
    hostjournal::checkRecord(shown.json(), made.constFirst());
    checkPortIsFree(m_host.port);
}
