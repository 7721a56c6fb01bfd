#pragma once

#include <QList>
#include <QString>

namespace devices {

/// A program that has a port open.
struct PortHolder
{
    qint64 process = 0;
    /// As the system shows it, 15 characters at most.
    QString name = {};
};

/// The other programs that have the serial line or pty of that name open, as far as this user may see them;
/// not the one that stands behind a pty. None for TCP.
QList<PortHolder> portHolders(const QString& port);
/// The name of a program; empty when there is none.
QString programName(qint64 process);
/// The programs of that name.
QList<PortHolder> programsNamed(const QString& name);

} // namespace devices
