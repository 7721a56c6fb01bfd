#include "streamdevice.h"

#include <QElapsedTimer>
#include <QIODevice>
#include <QLoggingCategory>

#include <algorithm>

namespace devices {

Q_LOGGING_CATEGORY(lcDevices, "frdevices", QtWarningMsg)

namespace {
// A register that holds the line with XOFF for longer than this has given up.
constexpr int WriteTimeoutMs = 5000;
constexpr int WaitSliceMs = 100;
} // namespace

StreamDevice::~StreamDevice() = default;

QString StreamDevice::errorString() const
{
    return stream().errorString();
}

bool StreamDevice::setOpened(bool opened)
{
    // The stream knows itself whether it is open; portOpen's result is this answer.
    return opened == isOpen();
}

qint64 StreamDevice::write(const QByteArray& data)
{
    if (!isOpen())
        return -1;
    const QByteArray rest = stream().bytesToWrite() > 0 ? data : data.mid(writeNow(data));
    if (!rest.isEmpty() && (stream().write(rest) != rest.size() || !flush())) {
        qCWarning(lcDevices).noquote() << getDeviceName() << "write failed:" << errorString();
        closeIfLost();
        return -1;
    }
    return data.size();
}

bool StreamDevice::flush()
{
    QElapsedTimer timer;
    timer.start();
    while (isOpen() && stream().bytesToWrite() > 0) {
        const qint64 left = WriteTimeoutMs - timer.elapsed();
        if (left <= 0 || !stream().waitForBytesWritten(static_cast<int>(left)))
            return stream().bytesToWrite() == 0;
    }
    return isOpen();
}

QByteArray StreamDevice::read(qint64 maxSize)
{
    if (!isOpen() || maxSize <= 0)
        return {};
    // What came before is enough: a driver asks again until its answer is whole, and each look at the line is
    // a call of the system.
    if (bytesReceived() == 0)
        fetch();
    QByteArray data = take(maxSize);
    closeIfLost();
    return data;
}

bool StreamDevice::waitForReadyRead(int milliseconds)
{
    // Qt's own wait is for bytes that are new; those that were fetched before would be waited past.
    if (isOpen() && bytesReceived() > 0)
        return true;
    QElapsedTimer timer;
    timer.start();
    while (isOpen()) {
        if (bytesReceived() > 0)
            return true;
        if (m_waitCallback)
            m_waitCallback();
        const int left = std::max(0, milliseconds - static_cast<int>(timer.elapsed()));
        if (waitOnce(std::min(left, WaitSliceMs)))
            continue;
        closeIfLost();
        if (left == 0)
            return false;
    }
    return false;
}

qint64 StreamDevice::bytesReceived() const
{
    return stream().bytesAvailable();
}

QByteArray StreamDevice::take(qint64 maxSize)
{
    return stream().read(maxSize);
}

bool StreamDevice::waitOnce(int milliseconds)
{
    if (stream().waitForReadyRead(milliseconds))
        return true;
    forgetTimeout();
    return false;
}

void StreamDevice::closeIfLost()
{
    if (bytesReceived() > 0 || !isLineLost())
        return;
    qCWarning(lcDevices).noquote() << getDeviceName() << "the line is gone:" << errorString();
    close();
}

} // namespace devices
