#include "register/timekeeping.h"

#include "register/judgement.h"
#include "register/parts.h"
#include "register/settingtable.h"

namespace emulator {

namespace {

constexpr qint64 startTolerance = qint64(5) * 60;

} // namespace

bool Timekeeping::isClockTime(const QDateTime& time)
{
    const int year = time.date().year();
    return time.isValid() && year >= 2000 && year <= 2099;
}

Refusal Timekeeping::start(const QDateTime& hostTime)
{
    if (!hostTime.isValid())
        return Refusal::BadValue;
    if (qAbs(m_parts.clock.now().secsTo(hostTime)) > startTolerance)
        return Refusal::ClockDiffers;
    const Refusal refusal = judgement::time(hostTime, m_parts);
    m_parts.state.isStarted = m_parts.state.isStarted || refusal == Refusal::None;
    return refusal;
}

Refusal Timekeeping::setTime(const QDateTime& time)
{
    if (!time.isValid())
        return Refusal::BadValue;
    const bool inShift = m_parts.state.shift.isOpen && !m_parts.settings.isOn(setting::clockInShift);
    if (inShift || m_parts.state.open.document.isOpen())
        return Refusal::WrongState;
    if (const Refusal refusal = judgement::time(time, m_parts); refusal != Refusal::None)
        return refusal;
    if (!isClockTime(time))
        return Refusal::BadValue;
    m_parts.clock.set(time);
    return Refusal::None;
}

} // namespace emulator
