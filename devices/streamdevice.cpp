#include "streamdevice.h"

#include "devicestr.h"

#include <QElapsedTimer>
#include <QLoggingCategory>

#include <algorithm>

namespace devices {

Q_LOGGING_CATEGORY(lcDevices, "frdevices", QtWarningMsg)

namespace {
constexpr int waitSliceMs = 100;
} // namespace

StreamDevice::~StreamDevice() = default;

void StreamDevice::close()
{
    m_received = m_taken = 0;
    closeLine();
}

bool StreamDevice::clear()
{
    m_received = m_taken = 0;
    return isOpen() && clearLine();
}

bool StreamDevice::setOpened(bool opened)
{
    // The line knows itself whether it is open; portOpen's result is this answer.
    return opened == isOpen();
}

qint64 StreamDevice::write(const QByteArray& data)
{
    if (!keepBudget() || !isOpen())
        return -1;
    if (m_observer != nullptr)
        m_observer->sent(data);
    m_repeats += data == m_lastWritten ? 1 : 0;
    m_lastWritten = data;
    const qint64 sent = send(data, withinBudget(writeTimeoutMs));
    if (sent == data.size()) {
        m_silence.written();
        return sent;
    }
    qCWarning(lcDevices).noquote() << getDeviceName() << "write failed:" << errorString();
    tellFailure(errorString());
    if (sent == lineIsGone)
        dropLine();
    return -1;
}

QByteArray StreamDevice::read(qint64 maxSize)
{
    if (!isOpen() || maxSize <= 0)
        return {};
    // What came before is enough: a driver asks again until its answer is whole, and each look at the line is
    // a call of the system.
    if (!hasInput())
        receiveInput(0);
    const qint64 size = std::min(maxSize, m_received - m_taken);
    QByteArray data(m_input.data() + m_taken, size);
    m_taken += size;
    return data;
}

bool StreamDevice::waitForReadyRead(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (keepBudget() && isOpen() && !hasInput()) {
        callWhileWaiting();
        const int left = withinBudget(std::max(0, milliseconds - static_cast<int>(timer.elapsed())));
        if (!receiveInput(std::min(left, waitSliceMs))) {
            m_silence.look();
            if (left == 0) {
                keepBudget();
                return false;
            }
        }
    }
    return hasInput();
}

bool StreamDevice::receiveInput(int milliseconds)
{
    const qint64 size = receive(m_input.data(), static_cast<qint64>(m_input.size()), milliseconds);
    m_taken = 0;
    m_received = std::max<qint64>(0, size);
    if (m_received > 0) {
        m_silence.received();
        if (m_observer != nullptr)
            m_observer->received(QByteArray(m_input.data(), m_received));
    }
    if (size == lineIsGone)
        dropLine();
    return hasInput();
}

void StreamDevice::tellOpening() const
{
    if (m_observer != nullptr)
        m_observer->opening();
}

void StreamDevice::tellOpened() const
{
    if (m_observer != nullptr)
        m_observer->opened();
}

int StreamDevice::withinBudget(int milliseconds) const
{
    if (m_deadline.isForever())
        return milliseconds;
    return static_cast<int>(std::min<qint64>(milliseconds, m_deadline.remainingTime()));
}

bool StreamDevice::keepBudget()
{
    if (!m_deadline.hasExpired())
        return true;
    if (isOpen()) {
        tellFailure(tr("the time for this port is spent"));
        close();
    }
    return false;
}

void StreamDevice::tellFailure(const QString& reason) const
{
    if (m_observer != nullptr)
        m_observer->failed(reason);
}

void StreamDevice::callWhileWaiting() const
{
    if (m_waitCallback)
        m_waitCallback();
}

void StreamDevice::dropLine()
{
    if (hasInput())
        return;
    qCWarning(lcDevices).noquote() << getDeviceName() << "the line is gone:" << errorString();
    tellFailure(errorString());
    close();
}

} // namespace devices
