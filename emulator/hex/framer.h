#pragma once

#include <QByteArray>
#include <QList>

namespace emulator {

/// Cuts the host's bytes on the HEX protocol into what they mean, and builds the frames that go back.
class HexFramer
{
public:
    enum class Kind {
        /// A whole request, from STX to the second check digit.
        Frame,
        /// The host asks whether the register is alive.
        Enquiry,
        /// The raw block that belongs to the command before it, ESC included.
        Block
    };

    struct Event
    {
        Kind kind;
        QByteArray bytes;
    };

    /// The time tells a frame that broke off from one that is still on its way.
    QList<Event> feed(const QByteArray& bytes, qint64 milliseconds);
    /// The next bytes are a raw block of that many bytes behind an ESC.
    void expectBlock(qsizetype size);
    /// Neither a frame nor a block is on its way.
    bool isIdle(qint64 milliseconds) const;

    static quint8 checkValue(const QByteArray& bytes);
    static QByteArray twoDigits(int value);
    /// An answer; every field is ended by a separator.
    static QByteArray answer(char id, const QByteArray& command, int code, const QList<QByteArray>& fields);

    static constexpr char startOfText = 0x02;
    static constexpr char endOfText = 0x03;
    static constexpr char enquiry = 0x05;
    static constexpr char acknowledge = 0x06;
    static constexpr char escape = 0x1B;
    static constexpr char separator = 0x1C;

private:
    enum class State { Outside, Body, Check, Block, Repetition };

    void feedByte(char byte, QList<Event>& events);
    void feedOutside(char byte, QList<Event>& events);
    void feedFrame(char byte, QList<Event>& events);
    void feedBlock(char byte, QList<Event>& events);
    void feedRepetition(char byte, QList<Event>& events);
    void finish(Kind kind, QList<Event>& events);

    State m_state = State::Outside;
    QByteArray m_bytes;
    qsizetype m_blockSize = 0;
    bool m_blockWanted = false;
    /// The block of the last command, if there was one.
    QByteArray m_lastBlock;
    qint64 m_lastByteAt = 0;
};

} // namespace emulator
