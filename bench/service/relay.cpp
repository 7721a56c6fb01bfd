// Lines at the pace of a serial one, in both directions.

#include "loopback.h"
#include "measures.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>
#include <stdexcept>
#include <vector>

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
    SerialLine(quint16 target, Clock::duration perByte)
        : m_target(target)
        , m_listener(newSocket())
        , m_toRegister(perByte)
        , m_toHost(perByte)
    {
        const sockaddr_in any = onThisMachine(0);
        if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&any), sizeof any) != 0
            || ::listen(m_listener, 1) != 0)
            throw std::runtime_error("cannot listen");
    }

    quint16 port() const
    {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
        return ntohs(address.sin_port);
    }
    void addTo(std::vector<pollfd>& entries) const
    {
        entries.push_back({m_listener, POLLIN, 0});
        // A negative one is passed over.
        entries.push_back({m_host, POLLIN, 0});
        entries.push_back({m_register, POLLIN, 0});
    }
    void meet(const pollfd* entries)
    {
        if (entries[1].revents != 0)
            carry(m_host, m_toRegister);
        if (entries[2].revents != 0)
            carry(m_register, m_toHost);
        if (entries[0].revents != 0)
            plugIn();
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
    void plugIn()
    {
        unplug();
        m_host = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        m_register = connectionTo(m_target);
        sendAtOnce(m_host);
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
        const ssize_t count = from < 0 ? 0 : ::recv(from, bytes, sizeof bytes, 0);
        if (count > 0)
            wire.put(bytes, count);
        else
            unplug();
    }
    static void write(int to, const QByteArray& bytes)
    {
        // So little always has room.
        if (to >= 0 && !bytes.isEmpty())
            ::send(to, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL);
    }

    const quint16 m_target;
    const int m_listener;
    int m_host = -1;
    int m_register = -1;
    Wire m_toRegister;
    Wire m_toHost;
};

timespec until(Clock::time_point due)
{
    constexpr long second = 1'000'000'000;
    const auto left = std::max(due - Clock::now(), Clock::duration::zero());
    const auto nanoseconds = std::chrono::nanoseconds(left).count();
    return {nanoseconds / second, nanoseconds % second};
}

void carry(std::vector<SerialLine>& lines)
{
    for (;;) {
        std::vector<pollfd> entries{{STDIN_FILENO, POLLIN, 0}};
        Clock::time_point due = Clock::now() + std::chrono::seconds(1);
        for (const SerialLine& line : lines) {
            line.addTo(entries);
            due = line.due(due);
        }
        const timespec patience = until(due);
        const int ready = ::ppoll(entries.data(), entries.size(), &patience, nullptr);
        if (entries[0].revents != 0)
            return;
        const Clock::time_point now = Clock::now();
        for (size_t i = 0; i < lines.size(); ++i) {
            if (ready > 0)
                lines[i].meet(&entries[1 + 3 * i]);
            lines[i].pump(now);
        }
    }
}

} // namespace

void relay(const QStringList& arguments)
{
    constexpr double bitsOfByte = 10;
    const Clock::duration perByte = std::chrono::duration_cast<Clock::duration>(
        std::chrono::duration<double>(bitsOfByte / arguments.at(0).toDouble()));
    std::vector<SerialLine> lines;
    const QStringList targets = arguments.mid(1);
    for (const QString& target : targets)
        lines.emplace_back(static_cast<quint16>(target.toUInt()), perByte);
    for (const SerialLine& line : lines)
        std::printf("%d ", line.port());
    std::printf("\n");
    std::fflush(stdout);
    carry(lines);
}
