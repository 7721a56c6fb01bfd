#include "heldline.h"

#include "connectionerror.h"
#include "devicestr.h"
#include "portname.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace devices {

namespace {

constexpr unsigned long lookAgainMs = 50;
constexpr int longestDropMs = 1000;
// Every program waits for it.
constexpr int quietMs = 30;
// Where something comes its sender may be held up between two pieces.
constexpr int quietBehindPiecesMs = 200;
constexpr qint64 dropAtOnce = 4096;

QString holderOf(const PortLock& lock)
{
    return lock.holder() == 0 ? tr("another program") : tr("process %1").arg(lock.holder());
}

/// Neither power nor cable are at fault where this user may not use the port.
ConnectionError portError(const QString& port, const QString& text)
{
    const QString path = isTcpName(port) ? QString() : devicePath(port);
    const bool isClosed = !path.isEmpty() && ::access(QFile::encodeName(path).constData(), R_OK | W_OK) != 0
        && errno == EACCES;
    return {isClosed ? ConnectionError::NoAccess : ConnectionError::NoPort, text};
}

} // namespace

HeldLine::HeldLine(const ConnectionSettings& settings)
    : m_device(createSerialDevice(settings.port))
{
    if (!m_device)
        throw ConnectionError(ConnectionError::NoPort, tr("\"%1\" names no port").arg(settings.port));
    if (!settings.isLockHeld)
        lockPort(settings);
    open(settings);
}

HeldLine::~HeldLine()
{
    endWaits();
    if (m_isIdle)
        m_lock.leaveIdle();
}

void HeldLine::endWaits()
{
    m_device->setWaitCallback({});
}

void HeldLine::lockPort(const ConnectionSettings& settings)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_lock.take(settings.port)) {
        if (!m_lock.errorString().isEmpty())
            throw portError(
                settings.port, tr("port %1 cannot be locked: %2").arg(settings.port, m_lock.errorString()));
        if (timer.hasExpired(settings.waitSeconds * 1000LL))
            throw ConnectionError(ConnectionError::Busy,
                tr("port %1 is busy: %2 works it").arg(settings.port, holderOf(m_lock)));
        QThread::msleep(lookAgainMs);
        if (settings.waitCallback)
            settings.waitCallback();
    }
}

void HeldLine::open(const ConnectionSettings& settings)
{
    m_device->setWaitCallback(settings.waitCallback);
    const bool tellsThatItPrints = settings.protocol == QStringLiteral("HEX");
    m_device->setSilenceCallback(settings.silenceCallback, StreamDevice::firstAnswerMs,
        tellsThatItPrints ? StreamDevice::firstAnswerMs : StreamDevice::laterAnswerMs);
    m_device->setObserver(settings.observer);
    if (settings.budgetMs > 0)
        m_device->setBudget(settings.budgetMs);
    // The driver sets up the line before it opens it, and a closed line takes no settings.
    if (m_device->open())
        return;
    // A bare name that is nowhere is one in /dev, which whoever meant a file beside him must see.
    const QString port = isTcpName(settings.port) ? settings.port : devicePath(settings.port);
    throw portError(port, tr("port %1 cannot be opened: %2").arg(port, m_device->errorString()));
}

void HeldLine::dropLeftovers()
{
    // Who was killed or interrupted may have asked for something that takes its time, or comes in pieces.
    int patience = m_lock.wasLeftBusy() ? longestDropMs : quietMs;
    QElapsedTimer timer;
    timer.start();
    for (int left = longestDropMs; left > 0 && m_device->waitForReadyRead(std::min(left, patience));
         left = longestDropMs - static_cast<int>(timer.elapsed())) {
        m_device->read(dropAtOnce);
        patience = std::max(patience, quietBehindPiecesMs);
    }
}

} // namespace devices
