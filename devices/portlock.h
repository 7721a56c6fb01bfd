#pragma once

#include <QList>
#include <QString>

#include <vector>

namespace devices {

/// The right to work a port: one program of this machine has it at a time, whatever name it knows the port
/// by and whichever user it runs for. The system takes it back when the program ends, however it ends.
///
/// The lock is on what the name leads to: the file behind all links, or the port number and each address of
/// the host, where all addresses of this machine are one.
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
    /// True after take when the holder before did not leave the line idle: it was killed, or broke off an
    /// exchange, and the register may still answer.
    bool wasLeftBusy() const { return m_wasLeftBusy; }
    /// Tells the next holder that the register owes no answer. To be called while the port is held.
    void leaveIdle();
    void release();
    /// The program that has the port, after take has failed; 0 when that is not known.
    qint64 holder() const { return m_holder; }
    /// Why there is no lock to be had: the lock's file and the system's words. Empty when another has it.
    QString errorString() const { return m_error; }

private:
    bool takeOne(const QString& target);
    void closeFiles();

    std::vector<int> m_files;
    bool m_wasLeftBusy = false;
    qint64 m_holder = 0;
    QString m_error;
};

} // namespace devices
