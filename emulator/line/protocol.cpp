#include "line/protocol.h"

#include "register/terminaltext.h"

#include <utility>

namespace emulator {

namespace {

constexpr qint64 millisecondsPerSecond = 1000;
constexpr qint64 pauseBetweenPieces = 50;
constexpr qint64 pauseBetweenBytes = 1;
constexpr qsizetype splitPiece = 7;

QByteArray changedByte(QByteArray answer, const Fault& fault)
{
    const qsizetype position = answer.isEmpty() ? 0 : fault.argument % answer.size();
    if (fault.mode == FaultMode::Drop)
        answer.remove(position, 1);
    else if (fault.mode == FaultMode::Double)
        answer.insert(position, answer.mid(position, 1));
    else if (!answer.isEmpty())
        answer[position] = static_cast<char>(answer[position] ^ 0x10);
    return answer;
}

// Faults that leave a sound answer on the line are not among them: it is the host's to find it.
bool isAnswerLost(FaultMode mode)
{
    switch (mode) {
    case FaultMode::Silence:
    case FaultMode::Lost:
    case FaultMode::Late:
    case FaultMode::BadCheck:
    case FaultMode::Cut:
    case FaultMode::Drop:
    case FaultMode::Flip:
    case FaultMode::Double:
    case FaultMode::ShapeBrokenData:
    case FaultMode::ShapeResult00:
    case FaultMode::ShapeNoCode:
        return true;
    default:
        return false;
    }
}

} // namespace

Protocol::Protocol(Register& device, Outbox& outbox, const Clock& clock)
    : m_device(device)
    , m_outbox(outbox)
    , m_clock(clock)
{
}

Fault Protocol::nextFault(const QByteArray& request)
{
    ++m_exchanges;
    const Fault chosen = m_source != nullptr ? m_source->choose(request, language(), m_exchanges) : Fault();
    const Fault planned = chosen.mode == FaultMode::None ? m_plan.at(m_exchanges) : chosen;
    const Fault fault = m_next ? *std::exchange(m_next, std::nullopt) : planned;
    if (FaultPlan::fits(fault, language()))
        return fault;
    if (m_misfitListener)
        m_misfitListener(FaultPlan::misfitWords(fault, language()));
    return {};
}

Fault Protocol::beginExchange(const QByteArray& request)
{
    const Fault fault = nextFault(request);
    m_deaf = false;
    m_isEarly = m_outbox.nextDue().has_value();
    m_documentBefore = m_device.drive().last().number;
    if (fault.mode == FaultMode::PaperOut || fault.mode == FaultMode::PaperIn)
        m_device.setPaper(fault.mode == FaultMode::PaperIn);
    if (fault.mode == FaultMode::PaperEnds || fault.mode == FaultMode::PaperEndsQuietly)
        m_device.setPaperLeft(fault.argument, fault.mode == FaultMode::PaperEndsQuietly);
    if (fault.mode == FaultMode::Restart)
        m_device.powerCycle();
    m_answerDelay = m_late.isEmpty() ? 0 : pauseAfterForeign();
    m_outbox.put(std::exchange(m_late, {}));
    m_deaf
        = fault.mode == FaultMode::Silence || fault.mode == FaultMode::Lost || fault.mode == FaultMode::Late;
    return fault;
}

void Protocol::note(Exchange exchange, const Fault& fault)
{
    exchange.number = m_exchanges;
    exchange.command = terminalText(exchange.command);
    exchange.reason = terminalText(exchange.reason);
    exchange.isEarly = m_isEarly;
    exchange.isOutcomeUnknown = exchange.isOutcomeUnknown || isAnswerLost(fault.mode);
    // An error that is a fault of the register tells nothing of the host, nor does one about a document that
    // is stored: the paper ended on it.
    const bool isStored = m_device.drive().last().number != m_documentBefore;
    exchange.isFalseError = fault.isError() || (isStored && !exchange.error.isEmpty());
    if (fault.isError())
        exchange.reason = QStringLiteral("%1: the fault %2").arg(exchange.command, FaultPlan::words(fault));
    else if (exchange.isFalseError)
        exchange.reason += QStringLiteral("; the document is stored");
    if (exchange.isRefused())
        m_device.refusals().add({exchange.request, exchange.command, exchange.error, exchange.reason});
    exchange.fault = fault.mode == FaultMode::None ? QString() : FaultPlan::words(fault);
    if (m_watcher)
        m_watcher(exchange);
    if (fault.cutsPower)
        cutPower();
}

void Protocol::cutPower()
{
    m_device.setPowered(false);
    m_outbox.clear();
    forget();
}

void Protocol::forget()
{
    m_late.clear();
    forgetRequest();
}

void Protocol::deliver(const QByteArray& request, const QByteArray& answer, const Fault& fault)
{
    switch (fault.mode) {
    case FaultMode::Silence:
    case FaultMode::Lost:
        return;
    case FaultMode::Late:
        m_late = answer;
        return;
    case FaultMode::Stale:
        m_outbox.put(foreignAnswer(answer));
        return m_outbox.put(answer, pauseAfterForeign());
    case FaultMode::Echo:
        return m_outbox.put(request + answer);
    case FaultMode::BadCheck:
        return m_outbox.put(damagedAnswer(answer));
    case FaultMode::Noise:
        return m_outbox.put(noise() + answer);
    case FaultMode::Cut:
        return m_outbox.put(answer.left(answer.size() / 2));
    case FaultMode::Drop:
    case FaultMode::Flip:
    case FaultMode::Double:
        return m_outbox.put(changedByte(answer, fault));
    case FaultMode::Split:
        return putSplit(answer, fault.argument > 0 ? fault.argument : splitPiece, pauseBetweenPieces);
    case FaultMode::ShapeBytes:
        return putSplit(answer, 1, pauseBetweenBytes);
    case FaultMode::ShapeBehindForeign:
        return m_outbox.put(foreignAnswer(answer) + answer);
    case FaultMode::Busy:
    case FaultMode::Slow:
        return putDelayed(answer, fault);
    default:
        m_outbox.put(shaped(answer, fault.mode), m_answerDelay);
    }
}

void Protocol::putSplit(const QByteArray& answer, qsizetype size, qint64 pause)
{
    for (qsizetype start = 0; start < answer.size(); start += size)
        m_outbox.put(answer.mid(start, size), start / size * pause);
}

void Protocol::putDelayed(const QByteArray& answer, const Fault& fault)
{
    // A slow register hears nothing while it works, a busy one answers when it is asked.
    m_deaf = fault.mode == FaultMode::Slow;
    m_outbox.put(answer, fault.argument * millisecondsPerSecond);
}

} // namespace emulator
