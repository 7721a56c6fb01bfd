#pragma once

#include <QString>

#include <stdexcept>

namespace frserver {

/// Where the service listens.
struct ListenAddress
{
    /// In digits, without brackets.
    QString address = QStringLiteral("127.0.0.1");
    quint16 port = 8403;

    /// Reads ADDRESS:PORT, [ADDRESS]:PORT or PORT. Throws std::invalid_argument with what is wrong, also with
    /// an address of others than this machine: without TLS tokens and receipts would be read on the way.
    static ListenAddress of(const QString& text);
};

} // namespace frserver
