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

    /// Of this machine alone.
    bool isLoopback() const;

    /// Reads ADDRESS:PORT, [ADDRESS]:PORT or PORT. Throws std::invalid_argument with what is wrong, also with
    /// an address that others reach while tokens and receipts would be read on the way, or whoever comes let
    /// in.
    static ListenAddress of(const QString& text, bool hasTls = false, bool hasTokens = false);

private:
    void requireSafe(const QString& text, bool hasTls, bool hasTokens) const;
};

} // namespace frserver
