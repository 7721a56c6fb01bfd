#include "panel/desk.h"

#include "http/problem.h"
#include "panel/eventview.h"
#include "panel/volatilesnapshots.h"

#include <QCoreApplication>

#include <utility>

namespace emulator::panel {

Desk::Desk(int number, Register& device, HostWatch& watch, FaultDesk& faults, http::EventStream& events)
    : m_number(number)
    , m_device(device)
    , m_watch(watch)
    , m_faults(faults)
    , m_events(events)
    , m_snapshots(std::make_unique<VolatileSnapshots>(device))
    , m_seen(seen())
    , m_wasOperatorReachable(device.state().isOperatorReachable)
    , m_documentBefore(device.drive().last().number)
{
    m_faults.attend(device);
    m_drawer.setSingleShot(true);
    QObject::connect(&m_drawer, &QTimer::timeout, &m_drawer, [this] { settle(); });
}

void Desk::noted(const Exchange& exchange)
{
    LoggedExchange logged;
    logged.dateTime = m_device.now();
    logged.exchange = exchange;
    const FiscalRecord last = m_device.drive().last();
    logged.documentAfter = last.number;
    logged.sign = last.sign;
    logged.documentBefore = std::exchange(m_documentBefore, logged.documentAfter);
    const QList<HostRecord::Warning>& warnings = m_watch.record().warnings;
    for (; m_warnings < warnings.size(); ++m_warnings)
        logged.warnings.append({warnings.at(m_warnings).kind, warnings.at(m_warnings).text});
    m_exchanges.note(logged);
    tellOf(*m_exchanges.youngest());
}

void Desk::tellOf(const LoggedExchange& exchange)
{
    tell("exchange", eventview::exchange(exchange));
    if (exchange.isRefused())
        tell("refusal", eventview::refusal(exchange));
    for (const LoggedExchange::Warning& warning : exchange.warnings)
        tell("warning", eventview::warning(exchange, warning));
    if (!exchange.exchange.fault.isEmpty())
        tell("fault", eventview::fault(exchange));
}

void Desk::stored(const QJsonObject& entry)
{
    tell("document", eventview::document(entry));
}

void Desk::printed(const tape::Page& page, quint32 document)
{
    const int number = m_tape.add(m_device.now(), document, m_device.drive(), page);
    tell("tape", {{QStringLiteral("number"), number}});
}

void Desk::tell(const QByteArray& type, QJsonObject data)
{
    data[QStringLiteral("register")] = m_number;
    m_pending.append({type, data});
}

void Desk::settle()
{
    // The drive has the pages of the last ones alone.
    if (m_areDocumentsRead)
        m_documents.follow(m_device.drive());
    tellWhatChanged();
    for (const Pending& pending : std::exchange(m_pending, {}))
        m_events.publish(pending.type, pending.data);
}

Desk::Seen Desk::seen() const
{
    return {
        m_device.hasPaper(), m_device.state().paper.linesLeft, m_device.isPowered(), m_device.isDrawerOpen()};
}

void Desk::tellWhatChanged()
{
    const Seen before = std::exchange(m_seen, seen());
    if (before.hasPaper != m_seen.hasPaper || before.linesLeft != m_seen.linesLeft)
        tell("state", eventview::part(QStringLiteral("paper")));
    if (before.isPowered != m_seen.isPowered)
        tell("state", eventview::part(QStringLiteral("power")));
    if (before.isDrawerOpen != m_seen.isDrawerOpen)
        tell("state", eventview::part(QStringLiteral("drawer")));
    // Without an event loop time does not pass by itself.
    if (m_seen.isDrawerOpen && !m_device.state().drawer.isHeld && QCoreApplication::instance() != nullptr)
        m_drawer.start(std::chrono::milliseconds(Drawer::staysOpen + 1));
}

const DocumentArchive& Desk::documents()
{
    if (!m_areDocumentsRead)
        m_documents = DocumentArchive(m_hands.documents());
    m_areDocumentsRead = true;
    m_documents.follow(m_device.drive());
    return m_documents;
}

void Desk::begin()
{
    m_seen = seen();
    m_wasOperatorReachable = m_device.state().isOperatorReachable;
    m_documentBefore = m_device.drive().last().number;
    m_documents = DocumentArchive();
    m_areDocumentsRead = !m_hands.documents;
}

void Desk::setPower(bool isOn)
{
    m_device.setPowered(isOn);
    if (!isOn)
        m_hands.dropLine();
}

void Desk::changed(const QString& part)
{
    m_seen = seen();
    tell("state", eventview::part(part));
    if (m_hands.keep())
        settle();
    checkWorks();
}

void Desk::checkWorks() const
{
    if (!m_stopReason.isEmpty())
        throw http::Problem(500,
            QStringLiteral("The register has stopped, since its state cannot be kept: %1. It works again "
                           "when the program is started anew.")
                .arg(m_stopReason));
}

void Desk::stop(const QString& why)
{
    m_stopReason = why;
    m_pending.clear();
    beginAnew();
    m_seen = seen();
    tell("state", eventview::part(QStringLiteral("power")));
    settle();
}

void Desk::keepSnapshot(const QString& name)
{
    m_snapshots->keep(name);
    if (!m_hands.documents)
        m_keptDocuments[name] = documents();
}

void Desk::removeSnapshot(const QString& name)
{
    m_snapshots->remove(name);
    m_keptDocuments.remove(name);
}

void Desk::restoreSnapshot(const QString& name)
{
    m_snapshots->restore(name);
    // The drive has the pages of the last ones alone.
    m_documents = m_keptDocuments.value(name);
    replaced();
}

void Desk::reset()
{
    m_snapshots->reset(m_hands.nextDrive());
    m_documents = DocumentArchive();
    m_tape.beginAnew();
    m_faults.clear();
    m_faults.setPowerCut(std::nullopt);
    m_device.setMarkVerdicts({});
    m_device.setCover(false);
    m_device.setPowered(true);
    m_device.setClockSpeed(1);
    m_device.setOperatorReachable(m_wasOperatorReachable);
    replaced();
}

void Desk::beginAnew()
{
    m_documentBefore = m_device.drive().last().number;
    m_areDocumentsRead = !m_hands.documents;
    m_exchanges.beginAnew(m_device.drive());
    m_tape.follow(m_device.drive());
    m_watch.beginAnew();
    m_hands.dropLine();
}

void Desk::replaced()
{
    beginAnew();
    changed(QStringLiteral("register"));
}

} // namespace emulator::panel
