#pragma once

#include "http/limits.h"

#include <QByteArray>
#include <QHash>

struct sockaddr;

namespace http {

/// How many connections each address has, and whether it may have one more.
class Admission
{
public:
    using Clock = std::chrono::steady_clock;

    explicit Admission(const Limits& limits);

    /// Of an address; of IPv6 the half that a network hands out, since anybody has all of the other half.
    static QByteArray keyOf(const sockaddr* address);

    bool mayEnter(const QByteArray& key, Clock::time_point now) const;
    void enter(const QByteArray& key);
    /// It showed a token that is known, which holds for its address as long as a connection with one is open,
    /// and a while longer.
    void showToken(const QByteArray& key);
    void leave(const QByteArray& key, bool showedToken, Clock::time_point now);
    int connections() const { return m_connections; }

private:
    struct Guest
    {
        int connections = 0;
        int withToken = 0;
        Clock::time_point knownUntil = Clock::time_point::min();
    };
    void forgetStrangers(Clock::time_point now);

    Limits m_limits;
    int m_connections = 0;
    QHash<QByteArray, Guest> m_guests;
};

} // namespace http
