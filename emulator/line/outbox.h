#pragma once

#include "register/clock.h"

#include <QByteArray>
#include <QList>

#include <optional>

namespace emulator {

/// Bytes on their way to the host, each piece with the time at which it may leave. With a baud rate they
/// leave at the pace of a line with ten bits a byte, otherwise at once.
class Outbox
{
public:
    explicit Outbox(const Clock& clock, int baudRate = 0)
        : m_clock(clock)
        , m_baudRate(baudRate)
    {
    }

    /// Goes out after everything that waits already, and not before the delay has passed.
    void put(const QByteArray& bytes, qint64 delay = 0);
    /// Goes out at once, ahead of what waits.
    void putFirst(const QByteArray& bytes);
    /// What may have left by now.
    QByteArray take();
    /// When the next byte may leave; none when nothing waits.
    std::optional<qint64> nextDue() const;
    void clear() { m_pieces.clear(); }

private:
    struct Piece
    {
        QByteArray bytes;
        qint64 due;
    };

    double millisecondsPerByte() const { return m_baudRate > 0 ? 10'000.0 / m_baudRate : 0; }

    const Clock& m_clock;
    int m_baudRate;
    QList<Piece> m_pieces;
    double m_lineFree = 0;
};

} // namespace emulator
