#include "peer.h"

#include <poll.h>
#include <pty.h>
#include <sched.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>

namespace {

// A UART hands over what it has collected when its buffer of 16 bytes is full.
constexpr qsizetype pieceSize = 16;
constexpr int stopCheckMs = 100;

} // namespace

Peer::Peer(Answerer answerer, Pace pace)
    : m_answerer(std::move(answerer))
    , m_pace(pace)
{
    char path[64] = {};
    termios raw{};
    cfmakeraw(&raw);
    if (openpty(&m_master, &m_slave, path, &raw, nullptr) != 0)
        qFatal("There is no pseudo terminal to be had");
    m_name = QString::fromLatin1(path);
    m_thread = std::thread([this] { run(); });
}

Peer::~Peer()
{
    m_stop = true;
    m_thread.join();
    close(m_slave);
    close(m_master);
}

void Peer::run()
{
    QByteArray received;
    char buffer[1 << 16];
    pollfd entry{m_master, POLLIN, 0};
    while (!m_stop) {
        if (poll(&entry, 1, stopCheckMs) <= 0)
            continue;
        const ssize_t count = read(m_master, buffer, sizeof buffer);
        if (count <= 0)
            return;
        received.append(buffer, count);
        const QByteArray answer = m_answerer(received);
        if (answer.isEmpty())
            continue;
        received.clear();
        send(answer);
    }
}

void Peer::send(const QByteArray& answer)
{
    const qsizetype size = m_pace == AtOnce ? answer.size() : pieceSize;
    auto due = std::chrono::steady_clock::now();
    for (qsizetype from = 0; from < answer.size(); from += size) {
        const qsizetype count = std::min(size, answer.size() - from);
        if (m_pace == AtLineSpeed) {
            due += std::chrono::nanoseconds(
                static_cast<qint64>(1e9 * secondsPerByte * static_cast<double>(count)));
            std::this_thread::sleep_until(due);
        }
        if (write(m_master, answer.constData() + from, static_cast<size_t>(count)) != count)
            qFatal("The far end cannot write");
    }
}
