#include "panel/desk.h"

#include "panel/eventview.h"
#include "panel/volatilesnapshots.h"

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
    , m_documentBefore(device.drive().last().number)
{
    m_documents.follow(device.drive());
}

void Desk::noted(const Exchange& exchange)
{
    LoggedExchange logged;
    logged.dateTime = m_device.now();
    logged.exchange = exchange;
    logged.documentAfter = m_device.drive().last().number;
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
    const int number = m_tape.add(m_device.now(), document, page);
    tell("tape", {{QStringLiteral("number"), number}});
}

void Desk::tell(const QByteArray& type, QJsonObject data)
{
    data[QStringLiteral("register")] = m_number;
    m_pending.append({type, data});
}

void Desk::settle()
{
    m_documents.follow(m_device.drive());
    tellWhatEnded();
    for (const Pending& pending : std::exchange(m_pending, {}))
        m_events.publish(pending.type, pending.data);
}

void Desk::tellWhatEnded()
{
    const Seen before = std::exchange(m_seen, seen());
    if (before.hasPaper != m_seen.hasPaper)
        tell("state", eventview::part(QStringLiteral("paper")));
    if (before.isPowered != m_seen.isPowered)
        tell("state", eventview::part(QStringLiteral("power")));
}

void Desk::begin(const QList<StoredDocument>& documents)
{
    m_seen = seen();
    m_documentBefore = m_device.drive().last().number;
    m_documents = DocumentArchive();
    for (const StoredDocument& document : documents)
        m_documents.add(document);
    m_documents.follow(m_device.drive());
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
}

void Desk::replaced()
{
    m_documentBefore = m_device.drive().last().number;
    m_exchanges.forgetDocumentsAfter(m_documentBefore);
    m_watch.beginAnew();
    m_hands.dropLine();
    changed(QStringLiteral("register"));
}

} // namespace emulator::panel
