#pragma once

#include "answerers.h"

#include <QString>

#include <atomic>
#include <thread>

/// The far end of a pseudo terminal: a thread that answers each request as soon as it is whole.
class Peer
{
public:
    enum Pace { AtOnce, AtLineSpeed };

    explicit Peer(Answerer answerer, Pace pace = AtOnce);
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Where the near end opens the line.
    const QString& name() const { return m_name; }

    /// Time that a byte of ten bits takes at 115200 baud.
    static constexpr double secondsPerByte = 10.0 / 115200;

private:
    void run();
    void send(const QByteArray& answer);

    const Answerer m_answerer;
    const Pace m_pace;
    int m_master = -1;
    int m_slave = -1;
    QString m_name;
    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};
