#include "emulatedline.h"

namespace preview {

EmulatedLine::EmulatedLine(
    emulator::VirtualClock& clock, emulator::Outbox& outbox, emulator::Protocol& protocol)
    : m_clock(clock)
    , m_outbox(outbox)
    , m_protocol(protocol)
{
}

qint64 EmulatedLine::write(const QByteArray& data)
{
    if (!m_open)
        return -1;
    m_protocol.receive(data);
    return data.size();
}

QByteArray EmulatedLine::read(qint64 maxSize)
{
    const QByteArray bytes = m_input.left(maxSize);
    m_input.remove(0, bytes.size());
    return bytes;
}

bool EmulatedLine::clear()
{
    m_input.clear();
    return m_open;
}

bool EmulatedLine::waitForReadyRead(int milliseconds)
{
    const qint64 deadline = m_clock.milliseconds() + milliseconds;
    m_input += m_outbox.take();
    while (m_input.isEmpty()) {
        const qint64 now = m_clock.milliseconds();
        const qint64 due = m_outbox.nextDue().value_or(deadline + 1);
        m_clock.advance(qMax<qint64>(0, qMin(due, deadline) - now));
        if (due > deadline)
            return false;
        m_input += m_outbox.take();
    }
    return true;
}

} // namespace preview
