#include "program/tcpconnections.h"

#include <QStringList>

namespace {

const QStringList& names()
{
    static const QStringList all{QStringLiteral("last"), QStringLiteral("first"), QStringLiteral("both")};
    return all;
}

} // namespace

QString nameOf(TcpConnections rule)
{
    return names().at(static_cast<qsizetype>(rule));
}

std::optional<TcpConnections> tcpConnectionsNamed(const QString& name)
{
    const qsizetype index = names().indexOf(name);
    return index < 0 ? std::nullopt : std::optional(static_cast<TcpConnections>(index));
}
