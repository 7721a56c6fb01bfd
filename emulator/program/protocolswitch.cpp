#include "program/protocolswitch.h"

namespace emulator {

ProtocolSwitch::ProtocolSwitch(Register& device, Outbox& outbox, const Clock& clock, ProtocolChoice choice)
    : m_hex(device, outbox, clock)
    , m_xml(device, outbox, clock)
    , m_choice(choice)
    , m_current(&m_hex)
{
    if (choice == ProtocolChoice::Xml)
        m_current = &m_xml;
}

void ProtocolSwitch::receive(const QByteArray& bytes)
{
    // A request that has begun stays where it is: a picture or a text may hold any byte.
    if (m_choice == ProtocolChoice::Auto && m_current->isIdle()) {
        for (const char byte : bytes) {
            const bool hex
                = byte == HexFramer::startOfText || byte == HexFramer::enquiry || byte == HexFramer::escape;
            if (!hex && byte != '<')
                continue;
            m_current = &m_hex;
            if (!hex)
                m_current = &m_xml;
            break;
        }
    }
    m_current->receive(bytes);
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

} // namespace emulator
