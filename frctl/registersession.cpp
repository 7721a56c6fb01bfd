#include "registersession.h"

#include "abstractfiscalregister.h"
#include "abstractfrdriver.h"
#include "abstractregisterparameters.h"
#include "errors.h"
#include "interruption.h"
#include "journalerror.h"
#include "pendingsales.h"
#include "plugin.h"
#include "portname.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>

namespace frctl {

namespace {
constexpr unsigned long lookAgainMs = 50;
constexpr int longestDropMs = 1000;
// Every command waits for it.
constexpr int quietMs = 30;
constexpr qint64 dropAtOnce = 4096;

QString holderOf(const devices::PortLock& lock)
{
    return lock.holder() == 0 ? QStringLiteral("another program")
                              : QStringLiteral("process %1").arg(lock.holder());
}
} // namespace

RegisterSession::RegisterSession(const Options& options)
    : m_options(options)
{
    m_deviceObject = createDeviceObject(findPlugin(options.plugins));
    m_line = devices::createSerialDevice(options.port);
    if (!m_line)
        throw UsageError(QStringLiteral("--port: \"%1\" names no port").arg(options.port));
    lockPort(options);
    *options.soleConnection = [line = m_line.get()] { return line->soleConnection(); };
    openLine(options);
    buildDriver(options);
    try {
        m_driver->portOpen();
        dropLeftovers();
    } catch (...) {
        closePort();
        throw;
    }
}

RegisterSession::~RegisterSession()
{
    closePort();
    *m_options.soleConnection = {};
    if (m_isIdle)
        m_lock.leaveIdle();
}

void RegisterSession::closePort()
{
    // On the way out nothing may be thrown any more.
    m_line->setWaitCallback({});
    m_driver->portClose();
}

void RegisterSession::lockPort(const Options& options)
{
    QElapsedTimer timer;
    timer.start();
    while (!m_lock.take(options.port)) {
        if (!m_lock.errorString().isEmpty())
            throw HostError(
                QStringLiteral("port %1 cannot be locked: %2").arg(options.port, m_lock.errorString()),
                sale::ErrorKind::Line);
        if (timer.hasExpired(options.waitSeconds * 1000LL))
            throw HostError(
                QStringLiteral("port %1 is busy: %2 works it").arg(options.port, holderOf(m_lock)),
                sale::ErrorKind::Busy);
        QThread::msleep(lookAgainMs);
        throwIfInterrupted();
    }
}

void RegisterSession::openLine(const Options& options)
{
    m_line->setWaitCallback(throwIfInterrupted);
    // The driver sets up the line before it opens it, and a closed line takes no settings.
    if (m_line->open())
        return;
    // A bare name is one in /dev, which whoever meant a file beside him must see.
    const QString port = devices::isTcpName(options.port) ? options.port : devices::devicePath(options.port);
    throw HostError(QStringLiteral("port %1 cannot be opened: %2").arg(port, m_line->errorString()),
        sale::ErrorKind::Line);
}

void RegisterSession::dropLeftovers()
{
    // Who was killed or interrupted may have asked for something that takes its time, or comes in pieces.
    const int patience = m_lock.wasLeftBusy() ? longestDropMs : quietMs;
    QElapsedTimer timer;
    timer.start();
    for (int left = longestDropMs; left > 0 && m_line->waitForReadyRead(std::min(left, patience));
         left = longestDropMs - static_cast<int>(timer.elapsed()))
        m_line->read(dropAtOnce);
}

void RegisterSession::setProperty(const char* name, const QVariant& value)
{
    if (!m_deviceObject->setProperty(name, value))
        throw HostError(QStringLiteral("the plugin does not take its property %1").arg(QLatin1String(name)));
}

void RegisterSession::buildDriver(const Options& options)
{
    setProperty("serialObj", QVariant::fromValue<QObject*>(m_line.get()));
    setProperty("protocol", options.protocol);
    setProperty("deviceId", options.deviceId);
    setProperty("speedEnumerate", options.speedEnumerate);
    setProperty("driverOptions", QVariant::fromValue(options.driverOptions));
    if (!options.protocolVersion.isEmpty())
        setProperty("protocolVer", options.protocolVersion);
    QMetaObject::invokeMethod(m_deviceObject.get(), "init");
    auto* const fiscalRegister = qobject_cast<hw::AbstractFiscalRegister*>(m_deviceObject.get());
    m_driver = fiscalRegister != nullptr ? fiscalRegister->getLegacyDriver() : nullptr;
    if (m_driver == nullptr)
        throw HostError(QStringLiteral("the plugin gives no driver"));
}

hw::AbstractRegisterParameters& RegisterSession::parameters() const
{
    auto* const parameters = qobject_cast<hw::AbstractRegisterParameters*>(m_deviceObject.get());
    if (parameters == nullptr)
        throw HostError(
            QStringLiteral("params: this plugin does not tell the register's parameters as data"));
    return *parameters;
}

void RegisterSession::connect(const Task& task, const FrUser& cashier)
{
    m_driver->connect();
    if (task.withInit) {
        settleSales(task.makesDocument);
        m_driver->init();
    }
    m_driver->cashierLogin(cashier);
}

void RegisterSession::settleSales(bool isJournalNeeded)
{
    try {
        if (!m_options.journal->exists())
            return;
        m_settledSales = sale::settlePendingSales(
            *m_driver, m_options.journal->store(), m_options.line(), m_options.registerName());
    } catch (const sale::JournalError& error) {
        if (isJournalNeeded)
            throw;
        m_options.warnings->add({{receipt::Finding::Warning, {}, {},
            QStringLiteral("sales of earlier runs are not settled: ") + QString::fromUtf8(error.what())}});
    }
}

} // namespace frctl
