#include "hex/framer.h"

namespace emulator {

namespace {

// Hosts do not cut the text of a barcode. What grows beyond this is noise that happened to begin like a
// frame.
constexpr qsizetype longestFrame = 65536;
constexpr qint64 longestPauseInFrame = 1000;

} // namespace

QList<HexFramer::Event> HexFramer::feed(const QByteArray& bytes, qint64 milliseconds)
{
    if (m_state != State::Outside && milliseconds - m_lastByteAt > longestPauseInFrame) {
        m_state = State::Outside;
        m_bytes.clear();
    }
    m_lastByteAt = milliseconds;
    QList<Event> events;
    for (const char byte : bytes)
        feedByte(byte, events);
    return events;
}

void HexFramer::expectBlock(qsizetype size)
{
    m_blockSize = size + 1;
    m_blockWanted = true;
}

bool HexFramer::isIdle(qint64 milliseconds) const
{
    return m_state == State::Outside || milliseconds - m_lastByteAt > longestPauseInFrame;
}

void HexFramer::feedByte(char byte, QList<Event>& events)
{
    switch (m_state) {
    case State::Outside:
        return feedOutside(byte, events);
    case State::Block:
        return feedBlock(byte, events);
    case State::Repetition:
        return feedRepetition(byte, events);
    default:
        return feedFrame(byte, events);
    }
}

void HexFramer::feedOutside(char byte, QList<Event>& events)
{
    if (byte == enquiry)
        events.append({Kind::Enquiry, {}});
    if (byte == startOfText)
        m_state = State::Body;
    else if (byte == escape && m_blockWanted)
        m_state = State::Block;
    else if (byte == escape && !m_lastBlock.isEmpty())
        m_state = State::Repetition;
    else
        return;
    m_bytes = QByteArray(1, byte);
}

void HexFramer::feedBlock(char byte, QList<Event>& events)
{
    m_bytes.append(byte);
    if (m_bytes.size() < m_blockSize)
        return;
    m_lastBlock = m_bytes;
    m_blockWanted = false;
    finish(Kind::Block, events);
}

// A host that reads again after a stale answer repeats the block; the second one is swallowed. An ESC that
// something else follows is noise, and what stood behind it is read as if no block could come again: it may
// be full of ESC.
void HexFramer::feedRepetition(char byte, QList<Event>& events)
{
    m_bytes.append(byte);
    const bool same = m_lastBlock.at(m_bytes.size() - 1) == byte;
    if (same && m_bytes.size() < m_lastBlock.size())
        return;
    const QByteArray rest = same ? QByteArray() : m_bytes.mid(1);
    m_bytes.clear();
    m_state = State::Outside;
    if (!same)
        m_lastBlock.clear();
    for (const char noise : rest)
        feedByte(noise, events);
}

void HexFramer::feedFrame(char byte, QList<Event>& events)
{
    if (byte == startOfText || m_bytes.size() > longestFrame) {
        // The host gave the frame up and begins anew.
        m_bytes = QByteArray(1, byte);
        m_state = byte == startOfText ? State::Body : State::Outside;
        return;
    }
    m_bytes.append(byte);
    if (m_state == State::Body) {
        if (byte == endOfText)
            m_state = State::Check;
    } else if (m_bytes.at(m_bytes.size() - 3) == endOfText) {
        // Whatever block was wanted or may come again, the host has gone on.
        m_blockWanted = false;
        m_lastBlock.clear();
        finish(Kind::Frame, events);
    }
}

void HexFramer::finish(Kind kind, QList<Event>& events)
{
    events.append({kind, m_bytes});
    m_bytes.clear();
    m_state = State::Outside;
}

quint8 HexFramer::checkValue(const QByteArray& bytes)
{
    quint8 value = 0;
    for (const char byte : bytes)
        value = static_cast<quint8>(value ^ static_cast<quint8>(byte));
    return value;
}

QByteArray HexFramer::twoDigits(int value)
{
    return QByteArray::number(value, 16).toUpper().rightJustified(2, '0');
}

QByteArray HexFramer::answer(char id, const QByteArray& command, int code, const QList<QByteArray>& fields)
{
    QByteArray body = QByteArray(1, id) + command + twoDigits(code);
    for (const QByteArray& field : fields)
        body += field + separator;
    body += endOfText;
    return startOfText + body + twoDigits(checkValue(body));
}

} // namespace emulator
