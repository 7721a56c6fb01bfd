#include "campaign.h"

#include "firstgoods.h"
#include "goods.h"
#include "neighbour.h"
#include "violation.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QLoggingCategory>

#include <cstdio>
#include <malloc.h>

namespace {

constexpr int period = 500;
constexpr int periodsToWarmUp = 3;
// Of the failed closes, when nobody else works the register.
constexpr int allowedUnknownPermille = 30;
constexpr qint64 allowedGrowth = qint64{256} * 1024;

qint64 memoryInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks) + static_cast<qint64>(info.hblkhd);
}

// The second number shows when a digit of the first was changed on the line.
QString saleName(int step)
{
    return QStringLiteral("Товар %1 %2").arg(step).arg(qint64{step} * 7919 % 10'007);
}

QString saleId(int step)
{
    return QStringLiteral("sale-%1").arg(step, 8, 10, QLatin1Char('0'));
}

int kopecks(const QString& text)
{
    return QString(text).remove(QLatin1Char('.')).toInt();
}

const char* protocolName(Protocol protocol)
{
    return protocol == Protocol::Hex ? "HEX" : "XML";
}

} // namespace

Campaign::Campaign(const Plan& plan)
    : m_plan(plan)
{
}

Campaign::~Campaign() = default;

bool Campaign::run()
{
    QElapsedTimer timer;
    timer.start();
    const int end = m_plan.from + m_plan.sales;
    try {
        for (m_step = m_plan.from - m_plan.from % period; m_step < end; ++m_step) {
            if (m_rig == nullptr)
                beginPeriod();
            sellOnce(m_step);
            if ((m_step + 1) % period == 0)
                endPeriod();
        }
    } catch (const Violation& violation) {
        std::fflush(stdout);
        std::fprintf(stderr,
            "campaign: %s\nrepeat with the same hazards and: --protocol %s --seed %llu --from %d --sales 1\n",
            violation.what(), protocolName(m_plan.protocol), static_cast<unsigned long long>(m_plan.seed),
            m_step);
        return false;
    }
    print(timer.elapsed());
    return isUnknownRare();
}

bool Campaign::isUnknownRare() const
{
    if (m_plan.neighbour != Neighbour::None || m_report.unknownPermille() <= allowedUnknownPermille)
        return true;
    std::fprintf(stderr, "campaign: too many sales are unknown\n");
    return false;
}

void Campaign::print(qint64 milliseconds) const
{
    m_report.print(QStringLiteral("%1: %2 sales, seed %3, %4 s")
                       .arg(QLatin1String(protocolName(m_plan.protocol)))
                       .arg(m_plan.sales)
                       .arg(m_plan.seed)
                       .arg(static_cast<double>(milliseconds) / 1000, 0, 'f', 1));
    if (m_memory.size() > periodsToWarmUp)
        std::printf("memory in use: %lld KB after %d sales, %lld KB at the end\n",
            static_cast<long long>(m_memory.at(periodsToWarmUp - 1) / 1024), periodsToWarmUp * period,
            static_cast<long long>(m_memory.constLast() / 1024));
}

void Campaign::beginPeriod()
{
    m_rig = std::make_unique<Rig>(m_plan.protocol);
    m_rig->device.journal().setListener([this](const QJsonObject& entry) {
        m_rig->line.documentStored();
        stored(entry);
    });
    m_journal = std::make_unique<sale::SqliteStore>(QStringLiteral(":memory:"));
    m_host = std::make_unique<Host>(
        *m_rig, *m_journal, m_report, Host::Setting{m_plan.protocol, m_plan.neighbour, m_plan.hazards});
    m_host->start();
    m_spared = false;
}

void Campaign::endPeriod()
{
    checkAll();
    m_host.reset();
    m_journal.reset();
    m_rig.reset();
    m_stored = {};
    m_verdicts = {};
    m_memory.append(memoryInUse());
    if (m_memory.size() > periodsToWarmUp
        && m_memory.constLast() - m_memory.at(periodsToWarmUp - 1) > allowedGrowth)
        throw Violation("memory grows: " + std::to_string(m_memory.constLast()) + " bytes in use");
}

void Campaign::stored(const QJsonObject& entry)
{
    // Shifts have a type, too, but no goods.
    if (entry.value(QStringLiteral("items")).toArray().isEmpty())
        return;
    const QString name = firstGoodsOf(entry);
    if (name == neighboursGoods())
        return;
    const int step = name.section(QLatin1Char(' '), 1, 1).toInt();
    ++m_stored[saleName(step) == name ? step : m_step];
    m_storedTotal = kopecks(entry.value(QStringLiteral("total")).toString());
    if (saleName(step) != name || entry.value(QStringLiteral("type")).toString() != QStringLiteral("sell"))
        m_storedTotal = -1;
}

void Campaign::sellOnce(int step)
{
    const bool watched = step >= m_plan.from && m_plan.from != 0;
    m_rig->line.setTrace(watched);
    if (watched)
        std::fprintf(stderr, "sale %d%s\n", step, m_spared ? ", no faults" : "");
    Random content(m_plan.seed, static_cast<quint64>(step) * 2);
    Random faults(m_plan.seed, static_cast<quint64>(step) * 2 + 1);
    m_storedTotal = 0;
    const receipt::Receipt receipt = drawSale(saleName(step), content);
    m_host->keepShiftShort();
    const SaleResult result = m_host->sell(saleId(step), receipt, m_spared ? nullptr : &faults);
    check(step, result, receipt.total);
    if (result.hasFailed()) {
        m_report.addFailure(result);
        sellAgain(step, receipt, result);
    } else {
        m_report.addSuccess(result);
        m_spared = false;
    }
}

void Campaign::sellAgain(int step, const receipt::Receipt& receipt, const SaleResult& failed)
{
    const int requests = m_rig->line.requestCount();
    const SaleResult again = m_host->sell(saleId(step), receipt, nullptr);
    // Otherwise the next sale shows whether the register works again.
    m_spared = failed.outcome != sale::Outcome::NotIssued;
    if (again.hasFailed())
        throw Violation("a sale over a good line failed: " + again.failure.toStdString());
    if (m_spared && (again.outcome != failed.outcome || m_rig->line.requestCount() != requests))
        throw Violation("a sale was begun again that was not to be");
    if (m_spared)
        return;
    if (!again.isIssued())
        throw Violation("a sale that was not issued could not be sold again");
    m_report.addSoldAgain();
    check(step, again, receipt.total);
}

void Campaign::check(int step, const SaleResult& result, qint64 total)
{
    if (m_spared && result.hasFailed())
        throw Violation("a sale over a good line failed: " + result.failure.toStdString());
    m_verdicts[step] = result.outcome;
    if (result.isIssued())
        checkIssued(step, result, total);
    else
        checkTimes(step, result.outcome);
}

void Campaign::checkIssued(int step, const SaleResult& result, qint64 total)
{
    const bool isStored = m_stored.contains(step);
    if (!isStored && !result.hasCloseFailed && mayBeAltered(result)) {
        m_verdicts.remove(step);
        return m_report.addLost(step);
    }
    if (!isStored && mayBeTakenForOurs(result)) {
        m_verdicts.remove(step);
        return m_report.addTakenForOurs();
    }
    checkTimes(step, result.outcome);
    if (m_storedTotal == total)
        return;
    if (!mayBeAltered(result))
        throw Violation(
            "stored total " + std::to_string(m_storedTotal) + " instead of " + std::to_string(total));
    m_report.addAltered(step);
}

void Campaign::checkTimes(int step, sale::Outcome outcome) const
{
    const int times = m_stored.value(step);
    const bool isTrue = outcome == sale::Outcome::Unknown
        ? times <= 1
        : times == (outcome == sale::Outcome::Issued ? 1 : 0);
    if (!isTrue)
        throw Violation("sale " + std::to_string(step) + " is told "
            + sale::outcomeName(outcome).toStdString() + " and stored " + std::to_string(times) + " times");
}

void Campaign::checkAll() const
{
    // What was held up anywhere has come through by now.
    for (auto verdict = m_verdicts.cbegin(); verdict != m_verdicts.cend(); ++verdict)
        checkTimes(verdict.key(), verdict.value());
}

bool Campaign::mayBeAltered(const SaleResult& result) const
{
    // An XML request has no check value: a byte that changes on the line changes the receipt, and no driver
    // can know.
    return m_plan.protocol == Protocol::Xml
        && (result.faults.contains(FaultKind::RequestFlip) || result.faults.contains(FaultKind::RequestDrop)
            || result.faults.contains(FaultKind::RequestDouble));
}

bool Campaign::mayBeTakenForOurs(const SaleResult& result) const
{
    // Also one that never came to its close: what was begun is judged by the register alone.
    return m_plan.neighbour == Neighbour::Unexpected && result.hasFailed()
        && result.deeds.contains(FaultKind::NeighbourSellsTheSame);
}
