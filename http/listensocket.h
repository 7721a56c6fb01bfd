#pragma once

#include <QString>

namespace http::listensocket {

/// Opens one at an address in digits. Throws ListenError with the system's words.
int open(const QString& address, quint16 port);
quint16 portOf(int socket);
/// Descriptors for so many connections, if the system grants them.
void makeRoom(int connections);

} // namespace http::listensocket
