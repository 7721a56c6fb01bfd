#pragma once

#include <QString>

namespace http::listensocket {

/// Opens one at an address in digits. Throws ListenError with the system's words.
int open(const QString& address, quint16 port);
quint16 portOf(int socket);
/// Has the process take descriptors for so many connections, if the system grants them, and give large blocks
/// of memory back as soon as they are free: bodies among the blocks of connections would leave holes for
/// ever.
void prepareProcess(int connections);

} // namespace http::listensocket
