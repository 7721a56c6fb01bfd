#include "http/listensocket.h"

#include "http/listenerror.h"

#include <QByteArray>

#include <arpa/inet.h>
#include <cstring>
#include <malloc.h>
#include <sys/resource.h>
#include <unistd.h>

namespace http::listensocket {

namespace {

struct Place
{
    sockaddr_storage address{};
    socklen_t size = 0;
};

Place placeOf(const QString& address, quint16 port)
{
    Place place;
    auto* four = reinterpret_cast<sockaddr_in*>(&place.address);
    auto* six = reinterpret_cast<sockaddr_in6*>(&place.address);
    const QByteArray text = address.toLatin1();
    if (inet_pton(AF_INET, text.constData(), &four->sin_addr) == 1) {
        four->sin_family = AF_INET;
        four->sin_port = htons(port);
        place.size = sizeof(*four);
    } else if (inet_pton(AF_INET6, text.constData(), &six->sin6_addr) == 1) {
        six->sin6_family = AF_INET6;
        six->sin6_port = htons(port);
        place.size = sizeof(*six);
    } else {
        throw ListenError((address + QStringLiteral(" is no address in digits")).toStdString());
    }
    return place;
}

} // namespace

int open(const QString& address, quint16 port)
{
    const Place place = placeOf(address, port);
    const int socket = ::socket(place.address.ss_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int yes = 1;
    const auto* name = reinterpret_cast<const sockaddr*>(&place.address);
    // A program that starts anew gets its port although connections of the run before linger.
    if (socket >= 0 && ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes)) == 0
        && ::bind(socket, name, place.size) == 0 && ::listen(socket, SOMAXCONN) == 0)
        return socket;
    const QString reason = QString::fromLocal8Bit(std::strerror(errno));
    if (socket >= 0)
        ::close(socket);
    throw ListenError(QStringLiteral("%1, port %2: %3").arg(address).arg(port).arg(reason).toStdString());
}

quint16 portOf(int socket)
{
    sockaddr_in6 address{};
    socklen_t size = sizeof(address);
    ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
    // At the same place in both families.
    return ntohs(address.sin6_port);
}

void prepareProcess(int connections)
{
    constexpr int large = 128 * 1024;
    ::mallopt(M_MMAP_THRESHOLD, large);
    constexpr rlim_t others = 256;
    rlimit room{};
    ::getrlimit(RLIMIT_NOFILE, &room);
    const rlim_t wanted = std::min(room.rlim_max, static_cast<rlim_t>(connections) + others);
    if (room.rlim_cur >= wanted)
        return;
    room.rlim_cur = wanted;
    ::setrlimit(RLIMIT_NOFILE, &room);
}

} // namespace http::listensocket
