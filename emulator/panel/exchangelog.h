#pragma once

#include "panel/loggedexchange.h"
#include "trace/framer.h"

#include <deque>

namespace emulator {
class FiscalDrive;
}

namespace emulator::panel {

/// The youngest exchanges of a line with their frames.
class ExchangeLog
{
public:
    /// Bytes in whatever pieces, as they go over the line.
    void passed(trace::Direction direction, const QByteArray& bytes);
    /// The register has acted on a request whose bytes have passed; gives its number.
    int note(LoggedExchange exchange);

    /// The register is another one than before: what this drive has not is no document of an exchange any
    /// more, and no exchange before now leads to one that comes.
    void beginAnew(const FiscalDrive& drive);

    int first() const { return last() - static_cast<int>(m_exchanges.size()) + 1; }
    int last() const { return m_last; }
    /// Null for one that is not kept.
    const LoggedExchange* find(int number) const;
    const LoggedExchange* youngest() const { return find(m_last); }
    /// Those that led to the document: since the one before it, up to the one that stored it.
    QList<const LoggedExchange*> leadingTo(quint32 document) const;
    /// Null when it is not kept.
    const LoggedExchange* storing(quint32 document) const;

private:
    void take(trace::Direction direction, const QByteArray& bytes);
    void append(LoggedExchange& exchange, const LoggedFrame& frame);
    void forgetOld();
    void forgetLoose();

    static constexpr size_t mostExchanges = 2000;
    /// Of memory that frames and reasons take.
    static constexpr qsizetype mostBytes = 8'000'000;
    static constexpr qsizetype mostLoose = 100;
    static constexpr qsizetype mostLooseBytes = 1'000'000;
    /// Of an exchange, with which signs of the line are kept.
    static constexpr qsizetype mostFrames = 500;

    trace::Framer m_requests{trace::Direction::ToRegister};
    trace::Framer m_answers{trace::Direction::ToHost};
    qint64 m_lastFrame = 0;
    int m_last = 0;
    int m_life = 0;
    std::deque<LoggedExchange> m_exchanges;
    qsizetype m_bytes = 0;
    /// Frames to the register that no exchange has claimed yet.
    QList<LoggedFrame> m_loose;
    qsizetype m_looseBytes = 0;
};

} // namespace emulator::panel
