#include "powercuts.h"

#include "memory/memory.h"
#include "numberedsale.h"
#include "register/register.h"
#include "register/systemclock.h"
#include "register/turnover.h"
#include "salemoment.h"
#include "violation.h"

#include <QJsonArray>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

namespace {

bool haveSameSign(const emulator::StoredDocument& one, const emulator::StoredDocument& other)
{
    return one.record.sign == other.record.sign;
}

/// What the receipts of a shift come to.
emulator::Turnover salesOf(const QList<emulator::StoredDocument>& documents, int shift)
{
    emulator::Turnover sales;
    for (const emulator::StoredDocument& document : documents) {
        const QJsonObject& entry = document.entry;
        if (entry.value(QStringLiteral("type")) != QStringLiteral("sell")
            || entry.value(QStringLiteral("shift")) != shift)
            continue;
        ++sales.count;
        sales.sum += emulator::parseDecimal(entry.value(QStringLiteral("total")).toString().toLatin1(), 2)
                         .value_or(0);
    }
    return sales;
}

void checkCounters(const emulator::Register& device, const QList<emulator::StoredDocument>& documents)
{
    const emulator::Shift& shift = device.state().shift;
    if (!shift.isOpen)
        return;
    const emulator::Turnover& counted = shift.counters.sales;
    const emulator::Turnover stored = salesOf(documents, shift.number);
    expect(counted.count == stored.count && shift.receipts == stored.count,
        QStringLiteral("the shift counts %1 sales and has %2").arg(counted.count).arg(stored.count));
    expect(counted.sum == stored.sum, QStringLiteral("the shift's sum is not that of its sales"));
}

void checkProgress(const emulator::Document& open, const WireTrace& trace)
{
    if (!trace.answered())
        return;
    const WireTrace::Progress is{static_cast<int>(open.phase), static_cast<int>(open.items.size())};
    expect(trace.answered() == is || trace.underWay() == is,
        QStringLiteral("the open document is at %1 with %2 positions, its host was told of %3 with %4")
            .arg(is.phase)
            .arg(is.positions)
            .arg(trace.answered()->phase)
            .arg(trace.answered()->positions));
}

} // namespace

PowerCuts::PowerCuts(const ProcessPlan& plan)
    : m_plan(plan)
    , m_random(plan.seed, 1)
    , m_register(plan.emulator, m_folder.path(), RegisterProcess::Line::Network)
    // Nobody else works the register, which a host cannot know of a network line.
    , m_host(
          {plan.frctl, plan.plugin, m_register.address(), m_folder.filePath(QStringLiteral("sales.sqlite")),
              {QStringLiteral("--exclusive"), QStringLiteral("yes")}})
{
}

bool PowerCuts::run()
{
    int number = 0;
    try {
        while (number < m_plan.count)
            cut(++number);
    } catch (const std::exception& violation) {
        m_folder.setAutoRemove(false);
        std::printf("VIOLATION at cut %d (--seed %llu), files in %s: %s\n", number,
            static_cast<unsigned long long>(m_plan.seed), qPrintable(m_folder.path()), violation.what());
        return false;
    }
    print();
    return true;
}

void PowerCuts::cut(int number)
{
    m_protocol = m_random.chance(500) ? QStringLiteral("HEX") : QStringLiteral("XML");
    const QStringList command = drawCommand(number);
    numberedsale::write(m_folder.filePath(QStringLiteral("receipt.json")), number);
    m_register.start();
    HostProcess host(m_host.frctl, m_host.arguments(m_protocol, command));
    SaleMoment::draw(m_random, m_protocol).wait(host, m_register, m_random);
    m_register.kill();
    m_counts.insideDocument += checkState() ? 1 : 0;
    // The power comes back while the host still asks, or long after.
    if (m_random.chance(500))
        m_register.start();
    const HostAnswer told = host.end();
    ++m_counts.statuses[told.status()];
    m_register.kill();
    checkState();
    checkVerdict(number, told);
    settle(number, command);
}

QStringList PowerCuts::drawCommand(int number)
{
    if (m_random.chance(80))
        return {QStringLiteral("z-report")};
    return {QStringLiteral("--id"), QStringLiteral("powercut-%1").arg(number), QStringLiteral("sell"),
        m_folder.filePath(QStringLiteral("receipt.json"))};
}

bool PowerCuts::checkState()
{
    const QString folder = m_folder.filePath(QStringLiteral("state"));
    const emulator::SystemClock clock;
    emulator::Register device(clock);
    emulator::Memory(std::make_unique<emulator::StateFolder>(folder)).load(device);
    const QList<emulator::StoredDocument> documents = emulator::Memory::documentsOf(folder);
    expect(documents.size() >= m_documents.size(), QStringLiteral("documents are lost"));
    expect(std::equal(m_documents.cbegin(), m_documents.cend(), documents.cbegin(), haveSameSign),
        QStringLiteral("documents are other ones"));
    const WireTrace& trace = m_register.trace();
    for (const QByteArray& sign : trace.signs())
        expect(std::any_of(documents.cbegin(), documents.cend(),
                   [&sign](const auto& document) { return document.record.sign == QLatin1String(sign); }),
            QStringLiteral("the host was told of a document that is lost"));
    checkProgress(device.document(), trace);
    checkCounters(device, documents);
    m_documents = documents;
    return device.document().isOpen();
}

qsizetype PowerCuts::receiptsOf(int number) const
{
    return std::count_if(m_documents.cbegin(), m_documents.cend(),
        [number](const auto& document) { return numberedsale::isDocument(document.entry, number); });
}

void PowerCuts::checkVerdict(int number, const HostAnswer& told) const
{
    expect(told.status() >= 0, QStringLiteral("the host died"));
    const qsizetype stored = receiptsOf(number);
    expect(stored <= 1, QStringLiteral("the sale is in the fiscal drive %1 times").arg(stored));
    // Not told of a sale over HEX that went well.
    const std::optional<qint64> document = told.documentNumber();
    expect(!told.isIssued() || !document || (*document > 0 && *document <= m_documents.size()),
        QStringLiteral("issued as document %1, and the fiscal drive has %2")
            .arg(document.value_or(0))
            .arg(m_documents.size()));
    // A report has no positions.
    const bool isSale = !told.json().value(QStringLiteral("items")).toArray().isEmpty();
    expect(!told.isIssued() || !isSale || stored == 1, QStringLiteral("issued, and not in the fiscal drive"));
    expect(!told.isNotIssued() || stored == 0, QStringLiteral("not issued, and in the fiscal drive"));
}

void PowerCuts::settle(int number, const QStringList& command)
{
    constexpr int attempts = 4;
    m_register.start();
    HostAnswer told;
    for (int attempt = 0; attempt < attempts && told.status() != HostAnswer::Done; ++attempt) {
        told = HostProcess(m_host.frctl, m_host.arguments(m_protocol, command)).end();
        m_counts.untold += attempt == 0 && told.status() == HostAnswer::FoundIssued ? 1 : 0;
    }
    m_register.kill();
    checkState();
    expect(
        told.status() == HostAnswer::Done, QStringLiteral("the host did not come through: ") + told.text());
    if (command.contains(QStringLiteral("sell")))
        expect(receiptsOf(number) == 1, QStringLiteral("a sale that was settled is not there once"));
}

void PowerCuts::print() const
{
    std::printf("power cuts: %d, no violation; documents in the fiscal drive: %lld\n", m_plan.count,
        static_cast<long long>(m_documents.size()));
    std::printf("cuts inside an open document: %d\n", m_counts.insideDocument);
    std::printf("sales that were stored before their host was told: %d\n", m_counts.untold);
    for (auto status = m_counts.statuses.cbegin(); status != m_counts.statuses.cend(); ++status)
        std::printf("hosts that ended with status %d: %d\n", status.key(), status.value());
}
