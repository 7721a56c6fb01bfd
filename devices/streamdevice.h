#pragma once

#include "abstractserialdevice.h"

#include <QObject>

#include <functional>

class QIODevice;

namespace devices {

/// What the devices of this folder have in common: blocking reads and writes on a QIODevice, without an event
/// loop. A QCoreApplication must exist, since Qt's ports and sockets want a thread that it knows.
///
/// A line that vanishes (unplugged, closed by the other end) is closed here as well, so that the driver's
/// next call fails at once with a message about the port, and so that a reconnection opens it anew.
class StreamDevice : public QObject, public hw::AbstractSerialDevice
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractSerialDevice)

public:
    ~StreamDevice() override;

    /// The callback runs at least every tenth of a second while a wait for input lasts. An exception that it
    /// throws ends the wait and passes through the driver to the host: a way out of a long exchange.
    void setWaitCallback(const std::function<void()>& callback) { m_waitCallback = callback; }

    /// Why open() or the last write failed, in the system's words.
    QString errorString() const;

    bool setOpened(bool opened) override;
    qint64 write(const QByteArray& data) override;
    QByteArray read(qint64 maxSize) override;
    bool flush() override;
    bool waitForReadyRead(int milliseconds) override;

protected:
    StreamDevice() = default;

    virtual QIODevice& stream() = 0;
    virtual const QIODevice& stream() const = 0;
    /// True when the last failure of the stream means that the line is gone.
    virtual bool isLineLost() const = 0;
    /// A wait that ran out is no error to keep.
    virtual void forgetTimeout() = 0;
    /// Hands the system what it takes at once and tells how much that was. What is left goes through the
    /// stream.
    virtual qint64 writeNow(const QByteArray&) { return 0; }
    /// Bytes that were received and not read yet, without those that the system holds.
    virtual qint64 bytesReceived() const;
    /// Reads from what was received.
    virtual QByteArray take(qint64 maxSize);
    /// Called with nothing received: waits for bytes and receives them, false when none came.
    virtual bool waitOnce(int milliseconds);
    /// Receives what the system holds, without waiting.
    void fetch() { waitOnce(0); }

private:
    void closeIfLost();

    std::function<void()> m_waitCallback;
};

} // namespace devices
