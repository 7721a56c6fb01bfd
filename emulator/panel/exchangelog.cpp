#include "panel/exchangelog.h"

#include "register/fiscaldrive.h"
#include "trace/recorder.h"

#include <algorithm>
#include <utility>

namespace emulator::panel {

namespace {

/// What it takes of memory, signs of one byte, too.
qsizetype sizeOf(const LoggedFrame& frame)
{
    constexpr qsizetype block = 32;
    return frame.frame.bytes.size() + static_cast<qsizetype>(sizeof(LoggedFrame)) + block;
}

/// Without its frames.
qsizetype sizeOf(const LoggedExchange& logged)
{
    qsizetype characters = logged.exchange.command.size() + logged.exchange.reason.size();
    for (const LoggedExchange::Warning& warning : logged.warnings)
        characters += warning.text.size();
    constexpr auto fixed = static_cast<qsizetype>(sizeof(LoggedExchange));
    constexpr auto letter = static_cast<qsizetype>(sizeof(QChar));
    return fixed + letter * characters;
}

} // namespace

void ExchangeLog::passed(trace::Direction direction, const QByteArray& bytes)
{
    const bool isToRegister = direction == trace::Direction::ToRegister;
    trace::Framer& framer = isToRegister ? m_requests : m_answers;
    trace::Framer& other = isToRegister ? m_answers : m_requests;
    // Who answers has got what the other one had to say.
    if (const QByteArray rest = other.takeRest(); !rest.trimmed().isEmpty())
        take(isToRegister ? trace::Direction::ToHost : trace::Direction::ToRegister, rest);
    for (const QByteArray& frame : framer.feed(bytes))
        take(direction, frame);
}

void ExchangeLog::take(trace::Direction direction, const QByteArray& bytes)
{
    const LoggedFrame frame{++m_lastFrame, {trace::Recorder::systemTime(), 1, direction, bytes}};
    // A request waits for the register to act on it; a sign of the line, such as ENQ, is about the last one.
    const bool isAboutLast = direction == trace::Direction::ToHost || bytes.size() == 1;
    if (!isAboutLast || m_exchanges.empty()) {
        m_loose.append(frame);
        m_looseBytes += sizeOf(frame);
        forgetLoose();
    }
    // A host that asks a register at work for a sign of life may do so for ever.
    else if (bytes.size() > 1 || m_exchanges.back().frames.size() < mostFrames)
        append(m_exchanges.back(), frame);
}

void ExchangeLog::forgetLoose()
{
    // The last one may be the request itself, however long it is.
    while (m_loose.size() > 1 && (m_loose.size() > mostLoose || m_looseBytes > mostLooseBytes))
        m_looseBytes -= sizeOf(m_loose.takeFirst());
}

int ExchangeLog::note(LoggedExchange exchange)
{
    const QByteArray request = std::exchange(exchange.exchange.request, {});
    // Blanks behind a document are no part of the request, but of its frame.
    const auto own = std::find_if(m_loose.cbegin(), m_loose.cend(),
        [&request](const LoggedFrame& frame) { return frame.frame.bytes.trimmed() == request.trimmed(); });
    // What stands before it is noise that came with it.
    const qsizetype count = own == m_loose.cend() ? m_loose.size() : own - m_loose.cbegin() + 1;
    exchange.number = ++m_last;
    exchange.life = m_life;
    m_bytes += sizeOf(exchange);
    for (const LoggedFrame& frame : m_loose.first(count)) {
        append(exchange, frame);
        m_looseBytes -= sizeOf(frame);
    }
    m_loose.remove(0, count);
    m_exchanges.push_back(std::move(exchange));
    forgetOld();
    return m_last;
}

void ExchangeLog::append(LoggedExchange& exchange, const LoggedFrame& frame)
{
    exchange.frames.append(frame);
    m_bytes += sizeOf(frame);
}

void ExchangeLog::forgetOld()
{
    while (m_exchanges.size() > 1 && (m_exchanges.size() > mostExchanges || m_bytes > mostBytes)) {
        for (const LoggedFrame& frame : std::as_const(m_exchanges.front().frames))
            m_bytes -= sizeOf(frame);
        m_bytes -= sizeOf(m_exchanges.front());
        m_exchanges.pop_front();
    }
}

void ExchangeLog::beginAnew(const FiscalDrive& drive)
{
    ++m_life;
    for (LoggedExchange& exchange : m_exchanges) {
        if (!drive.has(exchange.documentAfter, exchange.sign))
            exchange.documentBefore = exchange.documentAfter = 0;
    }
}

const LoggedExchange* ExchangeLog::find(int number) const
{
    return number < first() || number > m_last ? nullptr
                                               : &m_exchanges[static_cast<size_t>(number - first())];
}

const LoggedExchange* ExchangeLog::storing(quint32 document) const
{
    const auto found = std::find_if(
        m_exchanges.crbegin(), m_exchanges.crend(), [document](const LoggedExchange& exchange) {
            return exchange.documentBefore < document && document <= exchange.documentAfter;
        });
    return found == m_exchanges.crend() ? nullptr : &*found;
}

QList<const LoggedExchange*> ExchangeLog::leadingTo(quint32 document) const
{
    QList<const LoggedExchange*> leading;
    const LoggedExchange* exchange = storing(document);
    while (exchange != nullptr) {
        leading.prepend(exchange);
        exchange = find(exchange->number - 1);
        if (exchange != nullptr && exchange->life != leading.constFirst()->life)
            break;
        if (exchange != nullptr && exchange->hasStored())
            break;
    }
    return leading;
}

} // namespace emulator::panel
