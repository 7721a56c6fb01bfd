#include "campaign.h"

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
        std::fprintf(stderr, "campaign: %s\nrepeat with: --protocol %s --seed %llu --from %d --sales 1\n",
            violation.what(), protocolName(m_plan.protocol), static_cast<unsigned long long>(m_plan.seed),
            m_step);
        return false;
    }
    m_report.print(QStringLiteral("%1: %2 sales, seed %3, %4 s")
                       .arg(QLatin1String(protocolName(m_plan.protocol)))
                       .arg(m_plan.sales)
                       .arg(m_plan.seed)
                       .arg(static_cast<double>(timer.elapsed()) / 1000, 0, 'f', 1));
    if (m_memory.size() > periodsToWarmUp)
        std::printf("memory in use: %lld KB after %d sales, %lld KB at the end\n",
            static_cast<long long>(m_memory.at(periodsToWarmUp - 1) / 1024), periodsToWarmUp * period,
            static_cast<long long>(m_memory.constLast() / 1024));
    return true;
}

void Campaign::beginPeriod()
{
    m_rig = std::make_unique<Rig>(m_plan.protocol);
    m_rig->device.journal().setListener([this](const QJsonObject& entry) {
        m_rig->line.documentStored();
        stored(entry);
    });
    m_host = std::make_unique<Host>(*m_rig, m_plan.protocol, m_report, m_plan.neighbour);
    m_host->start();
    m_spared = false;
}

void Campaign::endPeriod()
{
    // What was held up anywhere has come through by now.
    for (auto verdict = m_verdicts.cbegin(); verdict != m_verdicts.cend(); ++verdict)
        checkVerdict(verdict.key(), verdict.value());
    m_host.reset();
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
    const QJsonArray items = entry.value(QStringLiteral("items")).toArray();
    if (items.isEmpty())
        return;
    const QString name = items.at(0).toObject().value(QStringLiteral("name")).toString();
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
    const SaleResult result = m_host->sell(receipt, m_spared ? nullptr : &faults);
    check(step, result, receipt.total);
    if (result.failure.isEmpty())
        m_report.addSuccess(result.faults);
    else
        m_report.addFailure(result.faults, result.verdict);
    // The sale after a failure gets a line without faults, and must work.
    m_spared = !result.failure.isEmpty();
}

void Campaign::check(int step, const SaleResult& result, qint64 total)
{
    if (m_spared && !result.failure.isEmpty())
        throw Violation("a sale over a good line failed: " + result.failure.toStdString());
    const int times = m_stored.value(step);
    if (result.issued && times == 0 && mayBeAltered(result))
        return m_report.addLost(step);
    if (result.issued && times != 1)
        throw Violation("a sale reported as done is stored " + std::to_string(times) + " times");
    if (result.issued && m_storedTotal != total && mayBeAltered(result))
        m_report.addAltered(step);
    else if (result.issued && m_storedTotal != total)
        throw Violation(
            "stored total " + std::to_string(m_storedTotal) + " instead of " + std::to_string(total));
    for (auto sale = m_stored.cbegin(); sale != m_stored.cend(); ++sale) {
        if (sale.value() > 1)
            throw Violation("sale " + std::to_string(sale.key()) + " is stored "
                + std::to_string(sale.value()) + " times");
    }
    if (!result.issued && !result.verdict && times != 0)
        throw Violation("a receipt that was never closed is stored");
    if (result.verdict) {
        m_verdicts[step] = *result.verdict;
        checkVerdict(step, *result.verdict);
    }
}

bool Campaign::mayBeAltered(const SaleResult& result) const
{
    // An XML request has no check value: a byte that changes on the line changes the receipt, and no driver
    // can know.
    return m_plan.protocol == Protocol::Xml
        && (result.faults.contains(FaultKind::RequestFlip) || result.faults.contains(FaultKind::RequestDrop)
            || result.faults.contains(FaultKind::RequestDouble));
}

void Campaign::checkVerdict(int step, sale::Outcome verdict) const
{
    const bool issued = m_stored.value(step) > 0;
    if ((verdict == sale::Outcome::Issued && !issued) || (verdict == sale::Outcome::NotIssued && issued))
        throw Violation(
            "wrong verdict: sale " + std::to_string(step) + (issued ? " is" : " is not") + " stored");
}
