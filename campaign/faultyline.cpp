#include "faultyline.h"

#include "hostkilled.h"
#include "neighbour.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr char startOfText = 0x02;

} // namespace

FaultyLine::FaultyLine(Protocol language, emulator::VirtualClock& clock, emulator::Register& device,
    emulator::Outbox& outbox, emulator::Protocol& protocol)
    : m_language(language)
    , m_clock(clock)
    , m_device(device)
    , m_outbox(outbox)
    , m_protocol(protocol)
{
}

void FaultyLine::setFaults(Random* random, int permille)
{
    m_random = random;
    m_permille = permille;
}

void FaultyLine::requireHost() const
{
    if (m_isHostDead)
        throw HostKilled();
}

void FaultyLine::killHost(FaultKind kind)
{
    m_injected.append(kind);
    traceEvent(faultInfo(kind).text);
    m_isHostDead = true;
    throw HostKilled();
}

void FaultyLine::reviveHost()
{
    close();
    m_isHostDead = false;
}

bool FaultyLine::setBaudRate(QSerialPort::BaudRate baudRate)
{
    if (m_open)
        m_baudRate = baudRate;
    return m_open;
}

bool FaultyLine::open()
{
    requireHost();
    m_open = true;
    return true;
}

void FaultyLine::close()
{
    // What was written leaves before the port closes; what comes then, nobody takes.
    releaseHeld();
    m_outbox.take();
    m_open = false;
    clear();
}

bool FaultyLine::clear()
{
    m_input.clear();
    m_read = 0;
    return m_open;
}

qint64 FaultyLine::write(const QByteArray& data)
{
    requireHost();
    trace("<", data);
    // ENQ and raw blocks belong to the request before them.
    const bool isRequest = m_language == Protocol::Xml || data.startsWith(startOfText);
    if (isRequest)
        beginRequest(data);
    if (!m_open)
        return -1;
    // The register stands at one speed only and takes everything else for noise.
    if (m_dead || m_baudRate != QSerialPort::Baud115200)
        return data.size();
    if (!m_held.isEmpty())
        m_held.append(data);
    else if (isRequest)
        send(data);
    else
        m_protocol.receive(data);
    return data.size();
}

FaultKind FaultyLine::nextFault()
{
    if (const FaultKind planned = m_planned.take(m_requestCount - 1); planned != FaultKind::None)
        return planned;
    if (m_random == nullptr || !m_random->chance(m_permille))
        return FaultKind::None;
    return drawFault(m_language, m_hazards, *m_random);
}

void FaultyLine::beginRequest(const QByteArray& request)
{
    m_call.requests.append(request);
    ++m_requestCount;
    m_readFaults = 0;
    m_fault = FaultKind::None;
    if (m_visitor)
        m_visitor();
    const bool reaches = m_open && !m_dead && m_held.isEmpty() && m_baudRate == QSerialPort::Baud115200;
    if (!reaches)
        return;
    m_fault = nextFault();
    if (m_fault == FaultKind::None)
        return;
    // A kill is noted when it comes.
    if (isHostKill(m_fault))
        return;
    m_injected.append(m_fault);
    traceEvent(faultInfo(m_fault).text);
}

Random& FaultyLine::random()
{
    return m_random == nullptr ? m_ownRandom : *m_random;
}

void FaultyLine::send(const QByteArray& request)
{
    if (isNeighbour(m_fault)) {
        letNeighbourAct(m_fault, random().between(1, 100'000));
        return m_protocol.receive(request);
    }
    switch (m_fault) {
    case FaultKind::RequestDrop:
    case FaultKind::RequestFlip:
    case FaultKind::RequestDouble:
        return m_protocol.receive(damagedRequest(request));
    case FaultKind::RequestHeld:
        m_held.append(request);
        m_heldUntil = m_clock.milliseconds() + random().between(500, 60'000);
        return;
    case FaultKind::DeadBefore:
    case FaultKind::PowerCutBefore:
        return lose();
    case FaultKind::HostKilledBefore:
        killHost(m_fault);
    case FaultKind::Unplugged:
        if (random().chance(500))
            m_protocol.receive(request);
        return lose();
    case FaultKind::DeadAfter:
    case FaultKind::RestartAfter:
    case FaultKind::PowerCutAfter:
        m_protocol.receive(request);
        return lose();
    case FaultKind::HostKilledAfter:
        m_protocol.receive(request);
        killHost(m_fault);
    default:
        if (m_fault != FaultKind::None)
            m_protocol.setNextFault(registerFault(m_fault, random()));
        m_protocol.receive(request);
    }
}

void FaultyLine::lose()
{
    m_outbox.clear();
    if (m_fault == FaultKind::RestartAfter) {
        m_device.powerCycle();
    } else if (isPowerCut(m_fault)) {
        m_powerCut();
    } else if (m_fault == FaultKind::Unplugged) {
        m_open = false;
        clear();
    } else {
        m_dead = true;
    }
}

QByteArray FaultyLine::damagedRequest(QByteArray request)
{
    const int position = random().below(request.size());
    if (m_fault == FaultKind::RequestDrop)
        request.remove(position, 1);
    else if (m_fault == FaultKind::RequestDouble)
        request.insert(position, request.mid(position, 1));
    else
        request[position] = static_cast<char>(request.at(position) ^ random().between(1, 255));
    return request;
}

bool FaultyLine::letNeighbourAct(FaultKind deed, emulator::Money price)
{
    if (!actAsNeighbour(deed, m_device, price, m_ours))
        return false;
    traceEvent(faultInfo(deed).text);
    return true;
}

void FaultyLine::documentStored()
{
    if (m_fault == FaultKind::PaperMiddle)
        m_device.setPaper(false);
}

void FaultyLine::releaseHeld()
{
    for (const QByteArray& bytes : std::exchange(m_held, {}))
        m_protocol.receive(bytes);
}

void FaultyLine::pump()
{
    QByteArray bytes = m_outbox.take();
    if (bytes.isEmpty() || m_dead)
        return;
    damage(bytes);
    trace(">", bytes);
    m_input = m_input.mid(m_read) + bytes;
    m_read = 0;
}

void FaultyLine::damage(QByteArray& bytes)
{
    if (m_fault == FaultKind::NoiseWithin) {
        QByteArray noise;
        for (int count = random().between(1, 3); count > 0; --count)
            noise.append(static_cast<char>(random().below(256)));
        bytes.insert(random().below(bytes.size()), noise);
        m_fault = FaultKind::None;
    } else if (m_fault == FaultKind::ReadFault) {
        m_readFaults = random().between(1, 3);
        m_fault = FaultKind::None;
    }
}

QByteArray FaultyLine::read(qint64 maxSize)
{
    if (m_readFaults > 0) {
        --m_readFaults;
        return {};
    }
    const QByteArray bytes = m_input.mid(m_read, maxSize);
    m_read += bytes.size();
    return bytes;
}

bool FaultyLine::waitForReadyRead(int milliseconds)
{
    requireHost();
    const qint64 deadline = m_clock.milliseconds() + milliseconds;
    while (m_open) {
        if (!m_held.isEmpty() && m_heldUntil <= m_clock.milliseconds())
            releaseHeld();
        if (m_read == m_input.size())
            pump();
        if (m_read < m_input.size())
            return true;
        qint64 next = m_outbox.nextDue().value_or(deadline + 1);
        if (!m_held.isEmpty())
            next = std::min(next, m_heldUntil);
        if (next > deadline)
            break;
        advanceTo(next);
    }
    advanceTo(deadline);
    return false;
}

void FaultyLine::advanceTo(qint64 time)
{
    const qint64 span = std::max<qint64>(0, time - m_clock.milliseconds());
    m_clock.advance(span);
    m_call.waited += span;
}

void FaultyLine::traceEvent(const char* event) const
{
    if (m_trace)
        std::fprintf(stderr, "  %s\n", event);
}

void FaultyLine::trace(const char* direction, const QByteArray& bytes) const
{
    if (!m_trace)
        return;
    const QByteArray text = m_language == Protocol::Xml ? bytes : bytes.toPercentEncoding(" ");
    std::fprintf(stderr, "%10lld %s %s\n", static_cast<long long>(m_clock.milliseconds() % 1'000'000'000),
        direction, text.constData());
}
