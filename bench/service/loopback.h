#pragma once

#include <QtGlobal>

#include <netinet/in.h>

// Connections to programs of this machine.

sockaddr_in onThisMachine(quint16 port);
int newSocket();
/// One that sends at once what it is given. Throws std::runtime_error where nobody listens.
int connectionTo(quint16 port);
/// Bytes are not held back to go with later ones.
void sendAtOnce(int socket);
