#include "powercuts.h"

#include "memory/memory.h"
#include "memory/memoryerror.h"
#include "register/register.h"
#include "register/systemclock.h"
#include "register/turnover.h"
#include "violation.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int patience = 180'000;
constexpr int issued = 0;
constexpr int issuedAfterFailure = 3;

/// Lines that the trace of a sale has, both directions.
struct SaleLines
{
    /// Those about its document come behind these.
    int before;
    int all;
};

constexpr SaleLines hexSale{44, 64};
constexpr SaleLines xmlSale{12, 20};

QString goodsOf(int number)
{
    return QStringLiteral("Продажа %1").arg(number);
}

QString nameOf(const emulator::StoredDocument& document)
{
    const QJsonArray items = document.entry.value(QStringLiteral("items")).toArray();
    return items.at(0).toObject().value(QStringLiteral("name")).toString();
}

bool haveSameSign(const emulator::StoredDocument& one, const emulator::StoredDocument& other)
{
    return one.record.sign == other.record.sign;
}

void expect(bool holds, const QString& what)
{
    if (!holds)
        throw Violation(what.toStdString());
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

PowerCuts::PowerCuts(const Plan& plan)
    : m_plan(plan)
    , m_random(plan.seed, 1)
    , m_register(plan.emulator, m_folder.path())
{
}

bool PowerCuts::run()
{
    int number = 0;
    try {
        while (number < m_plan.cuts)
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
    writeReceipt(number);
    m_register.start();
    QProcess host;
    startHost(host, command);
    waitForMoment(host);
    m_register.kill();
    m_counts.insideDocument += checkState() ? 1 : 0;
    // The power comes back while the host still asks, or long after.
    if (m_random.chance(500))
        m_register.start();
    const Told told = end(host);
    ++m_counts.statuses[told.status];
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

void PowerCuts::writeReceipt(int number) const
{
    QFile file(m_folder.filePath(QStringLiteral("receipt.json")));
    file.open(QIODevice::WriteOnly);
    file.write(QStringLiteral(R"({"type": "sell", "taxationType": "osn", "items": [
{"type": "position", "name": "%1", "price": 100, "quantity": 1, "amount": 100, "tax": {"type": "vat22"}},
{"type": "text", "text": "Спасибо"},
{"type": "position", "name": "Пакет", "price": 0.01, "quantity": 7, "amount": 0.07, "tax": {"type": "vat10"}}],
"payments": [{"type": "electronically", "sum": 40}, {"type": "cash", "sum": 100}]})")
                   .arg(goodsOf(number))
                   .toUtf8());
}

// Nobody else works the register, which a host cannot know of a network line.
QStringList PowerCuts::hostArguments(const QStringList& command) const
{
    return QStringList{QStringLiteral("--plugin"), m_plan.plugin, QStringLiteral("--port"),
               m_register.address(), QStringLiteral("--protocol"), m_protocol, QStringLiteral("--journal"),
               m_folder.filePath(QStringLiteral("sales.sqlite")), QStringLiteral("--exclusive"),
               QStringLiteral("yes"), QStringLiteral("--cashier"), QStringLiteral("Иванова"),
               QStringLiteral("--json")}
    + command;
}

void PowerCuts::startHost(QProcess& host, const QStringList& command) const
{
    host.setStandardErrorFile(m_folder.filePath(QStringLiteral("host.log")));
    host.start(m_plan.frctl, hostArguments(command));
    host.waitForStarted(patience);
}

PowerCuts::Told PowerCuts::end(QProcess& host)
{
    const bool hasEnded = host.state() == QProcess::NotRunning || host.waitForFinished(patience);
    expect(hasEnded && host.exitStatus() == QProcess::NormalExit, QStringLiteral("the host did not end"));
    return {host.exitCode(), QJsonDocument::fromJson(host.readAllStandardOutput()).object()};
}

std::optional<int> PowerCuts::drawMoment()
{
    const SaleLines lines = m_protocol == QStringLiteral("HEX") ? hexSale : xmlSale;
    const int kind = m_random.below(100);
    // What is to be kept arises with the document, and what is at stake with its closing.
    if (kind < 35)
        return std::nullopt;
    return kind < 80 ? m_random.between(lines.before, lines.all) : m_random.between(1, lines.before);
}

bool PowerCuts::isMoment(const std::optional<int>& moment)
{
    m_register.listen();
    const WireTrace& trace = m_register.trace();
    return moment ? trace.lines() >= *moment : trace.hasClosing();
}

void PowerCuts::waitForMoment(QProcess& host)
{
    const std::optional<int> moment = drawMoment();
    constexpr int longestPause = 3000;
    constexpr int pause = 200;
    while (!isMoment(moment) && host.state() != QProcess::NotRunning && !host.waitForFinished(0))
        QThread::usleep(pause);
    QThread::usleep(static_cast<unsigned long>(m_random.below(longestPause)));
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
        [number](const auto& document) { return nameOf(document) == goodsOf(number); });
}

void PowerCuts::checkVerdict(int number, const Told& told) const
{
    const qsizetype stored = receiptsOf(number);
    expect(stored <= 1, QStringLiteral("the sale is in the fiscal drive %1 times").arg(stored));
    const QString state = told.answer.value(QStringLiteral("state")).toString();
    // Not told of a sale over HEX that went well.
    const QJsonValue toldNumber = told.answer.value(QStringLiteral("documentNumber"));
    const qint64 document = toldNumber.toInteger();
    expect(state != QStringLiteral("issued") || toldNumber.isNull()
            || (document > 0 && document <= m_documents.size()),
        QStringLiteral("issued as document %1, and the fiscal drive has %2")
            .arg(document)
            .arg(m_documents.size()));
    // A report has no positions.
    const bool isSale = !told.answer.value(QStringLiteral("items")).toArray().isEmpty();
    expect(state != QStringLiteral("issued") || !isSale || stored == 1,
        QStringLiteral("issued, and not in the fiscal drive"));
    expect(state != QStringLiteral("notIssued") || stored == 0,
        QStringLiteral("not issued, and in the fiscal drive"));
}

void PowerCuts::settle(int number, const QStringList& command)
{
    constexpr int attempts = 4;
    m_register.start();
    Told told;
    for (int attempt = 0; attempt < attempts && told.status != issued; ++attempt) {
        QProcess host;
        startHost(host, command);
        told = end(host);
        m_counts.untold += attempt == 0 && told.status == issuedAfterFailure ? 1 : 0;
    }
    m_register.kill();
    checkState();
    expect(told.status == issued,
        QStringLiteral("the host did not come through: %1")
            .arg(QString::fromUtf8(QJsonDocument(told.answer).toJson(QJsonDocument::Compact))));
    if (command.contains(QStringLiteral("sell")))
        expect(receiptsOf(number) == 1, QStringLiteral("a sale that was settled is not there once"));
}

void PowerCuts::print() const
{
    std::printf("power cuts: %d, no violation; documents in the fiscal drive: %lld\n", m_plan.cuts,
        static_cast<long long>(m_documents.size()));
    std::printf("cuts inside an open document: %d\n", m_counts.insideDocument);
    std::printf("sales that were stored before their host was told: %d\n", m_counts.untold);
    for (auto status = m_counts.statuses.cbegin(); status != m_counts.statuses.cend(); ++status)
        std::printf("hosts that ended with status %d: %d\n", status.key(), status.value());
}
