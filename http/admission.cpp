#include "http/admission.h"

#include <arpa/inet.h>

namespace http {

Admission::Admission(const Limits& limits)
    : m_limits(limits)
{
}

QByteArray Admission::keyOf(const sockaddr* address)
{
    constexpr qsizetype half = 8;
    if (address->sa_family == AF_INET) {
        const auto* internet = reinterpret_cast<const sockaddr_in*>(address);
        return {reinterpret_cast<const char*>(&internet->sin_addr), sizeof(internet->sin_addr)};
    }
    const in6_addr& internet = reinterpret_cast<const sockaddr_in6*>(address)->sin6_addr;
    const QByteArray whole(reinterpret_cast<const char*>(&internet), sizeof(internet));
    return IN6_IS_ADDR_V4MAPPED(&internet) ? whole.right(sizeof(in_addr)) : whole.left(half);
}

bool Admission::mayEnter(const QByteArray& key, Clock::time_point now) const
{
    const Guest guest = m_guests.value(key);
    const bool isKnown = guest.withToken > 0 || now < guest.knownUntil;
    const int most = isKnown ? m_limits.connectionsOfCaller : m_limits.connectionsOfStranger;
    return m_connections < m_limits.connections && guest.connections < most;
}

void Admission::enter(const QByteArray& key)
{
    ++m_connections;
    ++m_guests[key].connections;
}

void Admission::showToken(const QByteArray& key)
{
    ++m_guests[key].withToken;
}

void Admission::leave(const QByteArray& key, bool showedToken, Clock::time_point now)
{
    --m_connections;
    Guest& guest = m_guests[key];
    --guest.connections;
    if (showedToken) {
        --guest.withToken;
        guest.knownUntil = now + m_limits.idle;
    }
    forgetStrangers(now);
}

void Admission::forgetStrangers(Clock::time_point now)
{
    m_guests.removeIf([now](const QHash<QByteArray, Guest>::iterator& entry) {
        return entry->connections == 0 && entry->knownUntil <= now;
    });
}

} // namespace http
