#include "line/outbox.h"

#include <algorithm>
#include <cmath>

namespace emulator {

void Outbox::put(const QByteArray& bytes, qint64 delay)
{
    qint64 due = m_clock.milliseconds() + delay;
    if (!m_pieces.isEmpty())
        due = std::max(due, m_pieces.constLast().due);
    if (!bytes.isEmpty())
        m_pieces.append({bytes, due});
}

void Outbox::putFirst(const QByteArray& bytes)
{
    m_pieces.prepend({bytes, m_clock.milliseconds()});
}

QByteArray Outbox::take()
{
    QByteArray result;
    const auto now = static_cast<double>(m_clock.milliseconds());
    while (!m_pieces.isEmpty() && static_cast<double>(m_pieces.constFirst().due) <= now) {
        Piece& piece = m_pieces.first();
        qsizetype count = piece.bytes.size();
        if (m_baudRate > 0) {
            const double start = std::max(m_lineFree, static_cast<double>(piece.due));
            const double sent = std::floor((now - start) / millisecondsPerByte());
            count = std::clamp<qsizetype>(static_cast<qsizetype>(sent), 0, count);
            m_lineFree = start + static_cast<double>(count) * millisecondsPerByte();
        }
        result += piece.bytes.left(count);
        piece.bytes.remove(0, count);
        if (!piece.bytes.isEmpty())
            break;
        m_pieces.removeFirst();
    }
    return result;
}

std::optional<qint64> Outbox::nextDue() const
{
    if (m_pieces.isEmpty())
        return std::nullopt;
    const double start = std::max(m_lineFree, static_cast<double>(m_pieces.constFirst().due));
    return static_cast<qint64>(std::ceil(start + millisecondsPerByte()));
}

} // namespace emulator
