#pragma once

#include <QList>
#include <QString>

#include <vector>

namespace devices {

/// The right to work a port: one program of this machine has it at a time, whatever name it knows the port
/// by and whichever user it runs for. The system takes it back when the program ends, however it ends.
///
/// The lock is on what the name leads to: the file behind all links, or the port number and each address of
/// the host.
class PortLock
{
public:
    PortLock() = default;
    ~PortLock() { release(); }
    PortLock(const PortLock&) = delete;
    PortLock& operator=(const PortLock&) = delete;

    /// The name as for createSerialDevice. False when another has the port, or when there is no lock to be
    /// had. A port that is not there needs no lock: opening it fails anyway.
    bool take(const QString& port);
    void release();
    /// The program that has the port, after take has failed; 0 when that is not known.
    qint64 holder() const { return m_holder; }
    /// Why there is no lock to be had, in the system's words; empty when another has it.
    QString errorString() const { return m_error; }

private:
    bool takeOne(const QString& target);

    std::vector<int> m_files;
    qint64 m_holder = 0;
    QString m_error;
};

} // namespace devices
