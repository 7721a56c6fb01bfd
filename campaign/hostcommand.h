#pragma once

#include <QStringList>

/// How hosts that are programs of their own are called.
struct HostCommand
{
    QString frctl;
    QString plugin;
    QString port;
    QString journal;
    /// Further options.
    QStringList options;

    QStringList arguments(const QString& protocol, const QStringList& command) const
    {
        return QStringList{QStringLiteral("--plugin"), plugin, QStringLiteral("--port"), port,
                   QStringLiteral("--protocol"), protocol, QStringLiteral("--journal"), journal,
                   QStringLiteral("--cashier"), QStringLiteral("Иванова"), QStringLiteral("--json")}
        + options + command;
    }
};
