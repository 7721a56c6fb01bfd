#include "program/protocolswitch.h"

#include <utility>

namespace emulator {

namespace {

constexpr qsizetype longestMark = 3;

// What the first byte that begins something begins.
std::optional<Language> languageOf(const QByteArray& bytes)
{
    for (const char byte : bytes) {
        if (byte == HexFramer::startOfText || byte == HexFramer::enquiry || byte == HexFramer::escape)
            return Language::Hex;
        if (byte == '<')
            return Language::Xml;
    }
    return std::nullopt;
}

} // namespace

ProtocolSwitch::ProtocolSwitch(Register& device, Outbox& outbox, const Clock& clock, ProtocolChoice choice)
    : m_hex(device, outbox, clock)
    , m_xml(device, outbox, clock)
    , m_choice(choice)
    , m_current(&m_hex)
{
    if (choice == ProtocolChoice::Xml)
        m_current = &m_xml;
    if (choice == ProtocolChoice::Hex)
        m_xml.refuseAll(QStringLiteral("the register speaks HEX"));
}

void ProtocolSwitch::receive(const QByteArray& bytes)
{
    // A request that has begun stays where it is: a picture or a text may hold any byte.
    const bool isFree = m_current->isIdle();
    if (isFree && m_choice == ProtocolChoice::Auto)
        chooseFor(bytes);
    // A document on a line of frames is noise there, but its host shall learn why.
    if (isFree && m_choice == ProtocolChoice::Hex && (languageOf(bytes) == Language::Xml || !m_xml.isIdle()))
        m_xml.receive(bytes);
    m_current->receive(bytes);
}

void ProtocolSwitch::chooseFor(const QByteArray& bytes)
{
    const std::optional<Language> language = languageOf(bytes);
    if (language == Language::Hex)
        change(m_hex);
    else if (language == Language::Xml)
        change(m_xml);
    else
        m_undecided = (m_undecided + bytes).right(longestMark);
}

void ProtocolSwitch::change(Protocol& protocol)
{
    const QByteArray undecided = std::exchange(m_undecided, {});
    if (m_current == &m_hex && &protocol == &m_xml)
        m_xml.receive(undecided);
    m_current = &protocol;
}

void ProtocolSwitch::setLenient(bool lenient)
{
    m_hex.setLenient(lenient);
    m_xml.setLenient(lenient);
}

void ProtocolSwitch::setFaults(const FaultPlan& plan)
{
    m_hex.setFaults(plan);
    m_xml.setFaults(plan);
}

void ProtocolSwitch::setFaultSource(FaultSource* source)
{
    m_hex.setFaultSource(source);
    m_xml.setFaultSource(source);
}

void ProtocolSwitch::forget()
{
    m_hex.forget();
    m_xml.forget();
    m_undecided.clear();
}

void ProtocolSwitch::setMisfitListener(const std::function<void(const QString& words)>& listener)
{
    m_hex.setMisfitListener(listener);
    m_xml.setMisfitListener(listener);
}

void ProtocolSwitch::setWatcher(const Protocol::Watcher& watcher)
{
    m_hex.setWatcher(watcher);
    m_xml.setWatcher(watcher);
}

} // namespace emulator
