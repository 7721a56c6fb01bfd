#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace frctl {

/// A port that hosts work as a register's.
class ServedPort
{
public:
    virtual ~ServedPort() = default;

    /// What a host has sent; empty when nothing came within that many milliseconds.
    virtual QByteArray read(int milliseconds) = 0;
    virtual void write(const QByteArray& bytes) = 0;
    /// No host has it open any more. From the first call on, the port is kept up for this host alone.
    virtual bool isLeft() = 0;
};

/// For the name of a link to make, or tcp:host:port. Throws UsageError and HostError.
std::unique_ptr<ServedPort> servePort(const QString& name);

} // namespace frctl
