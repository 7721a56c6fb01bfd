#include "loopback.h"

#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>
#include <string>

sockaddr_in onThisMachine(quint16 port)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

int newSocket()
{
    return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

int connectionTo(quint16 port)
{
    const int socket = newSocket();
    const sockaddr_in target = onThisMachine(port);
    sendAtOnce(socket);
    if (::connect(socket, reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0)
        return socket;
    ::close(socket);
    throw std::runtime_error("nobody listens on port " + std::to_string(port));
}

void sendAtOnce(int socket)
{
    const int yes = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
}
