#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

namespace frserver {

/// One that may ask, as the file of tokens has it.
struct TokenEntry
{
    QString name;
    /// "read", "sell" or "admin".
    QString role;
    /// Names of registers; none for all.
    QStringList registers = {};
    /// See http::Tokens::hashOf.
    QByteArray hash = {};
};

} // namespace frserver
