#include "worker/workerchannel.h"

#include "worker/ending.h"

#include <QJsonDocument>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace frserver {

namespace {

/// Above those that programs take for their standard streams.
constexpr int firstOwn = 3;

} // namespace

WorkerChannel::WorkerChannel()
    : m_input(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, firstOwn))
    , m_output(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, firstOwn))
{
    // A plugin that prints would be taken for messages.
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    ::close(nothing);
}

WorkerChannel::~WorkerChannel()
{
    ::close(m_input);
    ::close(m_output);
}

std::optional<QJsonObject> WorkerChannel::takeLine()
{
    const qsizetype end = m_received.indexOf('\n');
    if (end < 0)
        return std::nullopt;
    const QByteArray line = m_received.left(end);
    m_received.remove(0, end + 1);
    return QJsonDocument::fromJson(line).object();
}

std::optional<QJsonObject> WorkerChannel::next()
{
    for (;;) {
        if (const std::optional<QJsonObject> message = takeLine())
            return message;
        if (!receive())
            return std::nullopt;
    }
}

std::optional<QJsonObject> WorkerChannel::nextNow()
{
    pollfd entry{m_input, POLLIN, 0};
    while (::poll(&entry, 1, 0) > 0 && (entry.revents & POLLIN) != 0 && read()) { }
    return takeLine();
}

bool WorkerChannel::receive()
{
    std::array<pollfd, 2> entries{pollfd{m_input, POLLIN, 0}, pollfd{ending::descriptor(), POLLIN, 0}};
    if (::poll(entries.data(), entries.size(), -1) < 0)
        return errno == EINTR;
    return entries[1].revents == 0 && read();
}

bool WorkerChannel::read()
{
    std::array<char, 4096> bytes;
    const ssize_t count = ::read(m_input, bytes.data(), bytes.size());
    if (count > 0)
        m_received.append(bytes.data(), count);
    return count > 0 || (count < 0 && errno == EINTR);
}

void WorkerChannel::send(const QJsonObject& message) const
{
    const QByteArray line = QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    for (qsizetype written = 0; written < line.size();) {
        const ssize_t count
            = ::write(m_output, line.constData() + written, static_cast<size_t>(line.size() - written));
        // Nobody listens any more; the journal knows what was done.
        if (count < 0 && errno != EINTR)
            return;
        written += count > 0 ? count : 0;
    }
}

void WorkerChannel::sendIfRoom(const QJsonObject& message) const
{
    // So short a line is taken whole or not at all.
    pollfd entry{m_output, POLLOUT, 0};
    if (::poll(&entry, 1, 0) > 0 && (entry.revents & POLLOUT) != 0)
        send(message);
}

bool WorkerChannel::isEnding() const
{
    pollfd entry{m_input, POLLIN, 0};
    const bool isHungUp = ::poll(&entry, 1, 0) > 0 && (entry.revents & POLLHUP) != 0;
    return isHungUp || ending::isWanted();
}

} // namespace frserver
