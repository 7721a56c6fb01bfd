// Lines at the pace of a serial one, in both directions.

#include "loopback.h"
#include "measures.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <deque>
#include <optional>
#include <stdexcept>

namespace {

using Clock = std::chrono::steady_clock;

/// A converter on USB hands over so much at once, and the end of what is sent when it is there.
constexpr qsizetype packetSize = 64;

/// One direction: bytes that arrive at once leave when a line would have carried them.
class Wire
{
public:
    explicit Wire(Clock::duration perByte)
        : m_perByte(perByte)
    {
    }

    void put(const char* bytes, qsizetype count)
    {
        if (m_waiting.isEmpty())
            m_free = std::max(m_free, Clock::now());
        m_waiting.append(bytes, count);
    }
    /// When the next packet is through.
    std::optional<Clock::time_point> due() const
    {
        if (m_waiting.isEmpty())
            return std::nullopt;
        return m_free + m_perByte * std::min(packetSize, m_waiting.size());
    }
    QByteArray take(Clock::time_point now)
    {
        QByteArray through;
        while (!m_waiting.isEmpty() && *due() <= now) {
            m_free = *due();
            const qsizetype count = std::min(packetSize, m_waiting.size());
            through += m_waiting.left(count);
            m_waiting.remove(0, count);
        }
        return through;
    }
    void clear() { m_waiting.clear(); }

private:
    const Clock::duration m_perByte;
    QByteArray m_waiting;
    /// The line carries nothing from then on.
    Clock::time_point m_free;
};

/// Listens for the host and carries what it and the register say.
class SerialLine
{
public:
    SerialLine(quint16 target, Clock::duration perByte, int events)
        : m_target(target)
        , m_events(events)
        , m_listener(newSocket())
        , m_toRegister(perByte)
        , m_toHost(perByte)
    {
        const sockaddr_in any = onThisMachine(0);
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&any), sizeof any) != 0
            || ::listen(m_listener, 1) != 0)
            throw std::runtime_error("cannot listen");
    }
    /// Where it stays from now on, for the events to come.
    void begin() { watch(m_listener, Listener); }

    quint16 port() const
    {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }
    static void meet(const epoll_event& event)
    {
        const auto* const end = static_cast<const End*>(event.data.ptr);
        if (end->kind == Host)
            end->line->carry(end->line->m_host, end->line->m_toRegister);
        else if (end->kind == Register)
            end->line->carry(end->line->m_register, end->line->m_toHost);
        else
            end->line->plugIn();
    }
    void pump(Clock::time_point now)
    {
        write(m_register, m_toRegister.take(now));
        write(m_host, m_toHost.take(now));
    }
    Clock::time_point due(Clock::time_point latest) const
    {
        return std::min(m_toRegister.due().value_or(latest), m_toHost.due().value_or(latest));
    }

private:
    enum Kind { Listener, Host, Register };
    /// Whose event it is.
    struct End
    {
        SerialLine* line = nullptr;
        Kind kind = Listener;
    };

    void watch(int socket, Kind kind)
    {
        m_ends[kind] = {this, kind};
        epoll_event event{EPOLLIN, {&m_ends[kind]}};
        if (::epoll_ctl(m_events, EPOLL_CTL_ADD, socket, &event) != 0)
            throw std::runtime_error("cannot watch a line");
    }
    void plugIn()
    {
        unplug();
        m_host = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        m_register = connectionTo(m_target);
        sendAtOnce(m_host);
        watch(m_host, Host);
        watch(m_register, Register);
    }
    void unplug()
    {
        for (int* const socket : {&m_host, &m_register}) {
            if (*socket >= 0)
                ::close(*socket);
            *socket = -1;
        }
        m_toHost.clear();
        m_toRegister.clear();
    }
    void carry(int from, Wire& wire)
    {
        char bytes[4096];
        const ssize_t count = from < 0 ? 0 : ::recv(from, bytes, sizeof bytes, MSG_DONTWAIT);
        if (count > 0)
            wire.put(bytes, count);
        // Else the event is that of the connection before.
        else if (count == 0 || errno != EAGAIN)
            unplug();
    }
    static void write(int to, const QByteArray& bytes)
    {
        // So little always has room.
        if (to >= 0 && !bytes.isEmpty())
            ::send(to, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL);
    }

    const quint16 m_target;
    const int m_events;
    const int m_listener;
    int m_host = -1;
    int m_register = -1;
    Wire m_toRegister;
    Wire m_toHost;
    std::array<End, 3> m_ends;
};

timespec until(Clock::time_point due)
{
    constexpr long second = 1'000'000'000;
    const auto left = std::max(due - Clock::now(), Clock::duration::zero());
    const auto nanoseconds = std::chrono::nanoseconds(left).count();
    return {nanoseconds / second, nanoseconds % second};
}

void carry(std::deque<SerialLine>& lines, int events)
{
    // Standard input ends it, and is no end of a line.
    epoll_event input{EPOLLIN, {nullptr}};
    ::epoll_ctl(events, EPOLL_CTL_ADD, STDIN_FILENO, &input);
    std::array<epoll_event, 64> met;
    for (;;) {
        Clock::time_point due = Clock::now() + std::chrono::seconds(1);
        for (const SerialLine& line : lines)
            due = line.due(due);
        const timespec patience = until(due);
        const int ready
            = ::epoll_pwait2(events, met.data(), static_cast<int>(met.size()), &patience, nullptr);
        for (int i = 0; i < ready; ++i) {
            if (met[i].data.ptr == nullptr)
                return;
            SerialLine::meet(met[i]);
        }
        const Clock::time_point now = Clock::now();
        for (SerialLine& line : lines)
            line.pump(now);
    }
}

} // namespace

void relay(const QStringList& arguments)
{
    constexpr double bitsOfByte = 10;
    const Clock::duration perByte = std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(bitsOfByte / arguments.at(0).toDouble()));
    // With many lines to look through, poll would take more of the processors than the bytes do.
    const int events = ::epoll_create1(EPOLL_CLOEXEC);
    std::deque<SerialLine> lines;
    const QStringList targets = arguments.mid(1);
    for (const QString& target : targets)
        lines.emplace_back(static_cast<quint16>(target.toUInt()), perByte, events).begin();
    for (const SerialLine& line : lines)
        std::printf("%d ", line.port());
    std::printf("\n");
    std::fflush(stdout);
    carry(lines, events);
}
