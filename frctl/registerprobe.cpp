#include "registerprobe.h"

#include "abstractfrdriver.h"
#include "connectionerror.h"
#include "deviceinfo.h"
#include "exceptions.h"
#include "frctltr.h"
#include "interruption.h"
#include "linetrace.h"
#include "options.h"
#include "passingobserver.h"
#include "portname.h"
#include "progress.h"
#include "registerconnection.h"
#include "registertaken.h"
#include "trace/signs.h"

#include <QFileInfo>

namespace frctl {

namespace {

class LineWatch : public PassingObserver
{
public:
    using PassingObserver::PassingObserver;

    void received(const QByteArray& bytes) override
    {
        count += bytes.size();
        // A register over HEX says so when it is asked whether it is there, also when it has no time for
        // more.
        isAcknowledgedOnly = isAcknowledgedOnly && bytes.count(trace::acknowledge) == bytes.size();
        PassingObserver::received(bytes);
    }
    void failed(const QString& reason) override
    {
        hasFailed = true;
        PassingObserver::failed(reason);
    }

    qint64 count = 0;
    bool isAcknowledgedOnly = true;
    bool hasFailed = false;
};

/// One that refuses to tell it has answered all the same.
QString innOf(AbstractFrDriver& driver)
{
    try {
        return driver.getInn().trimmed();
    } catch (const FrCommandException&) {
        return {};
    }
}

void askOver(const devices::ConnectionSettings& settings, const LineWatch& watch, Probe& probe)
{
    devices::RegisterConnection connection(settings);
    probe.isAsked = true;
    try {
        probe.found = identify(connection.driver(), probe.protocol);
        connection.leaveIdle();
    } catch (const BasicException& error) {
        probe.failure = error.tr().ru();
    }
    probe.isLineGone = watch.hasFailed && !connection.isBudgetSpent();
    probe.lineErrors = connection.lineErrors();
}

bool isPortThere(const QString& port)
{
    return !devices::isTcpName(port) && QFileInfo::exists(devices::devicePath(port));
}

bool hasLineErrors(const Probe& probe)
{
    return probe.lineErrors && (probe.lineErrors->framing > 0 || probe.lineErrors->parity > 0);
}

} // namespace

devices::ConnectionSettings probeSettings(
    const Options& options, const QString& port, const QString& protocol)
{
    devices::ConnectionSettings settings = options.connection();
    settings.port = port;
    settings.protocol = protocol;
    settings.waitCallback = throwIfInterrupted;
    settings.budgetMs = probeMs;
    return settings;
}

FoundRegister identify(AbstractFrDriver& driver, const QString& protocol)
{
    driver.connect();
    const DeviceInfo info = driver.getDeviceInfo();
    return {info.getModelName(), info.getNumber().trimmed(), info.getFirmwareVersion(),
        protocol == QStringLiteral("HEX") ? innOf(driver) : QString()};
}

Probe probe(const Options& options, const QString& port, const QString& protocol, LineTrace* trace)
{
    const Progress progress(tr("%1: asking over %2").arg(port, protocol));
    if (trace != nullptr)
        trace->note(port + QLatin1Char(' ') + protocol);
    LineWatch watch(trace);
    devices::ConnectionSettings settings = probeSettings(options, port, protocol);
    settings.observer = &watch;
    Probe probe{.port = port, .protocol = protocol};
    try {
        options.journal->requireFreeLine(port, options.isExclusive);
        askOver(settings, watch, probe);
    } catch (const sale::RegisterTaken& error) {
        probe.failure = QString::fromUtf8(error.what());
        probe.isKept = true;
    } catch (const devices::ConnectionError& error) {
        if (error.reason() == devices::ConnectionError::NoPlugin)
            throw;
        probe.failure = QString::fromUtf8(error.what());
        probe.isKept = error.reason() == devices::ConnectionError::Busy || isPortThere(port);
    } catch (const BasicException& error) {
        probe.failure = error.tr().ru();
    }
    probe.receivedBytes = watch.count;
    probe.isAtWork = protocol == QStringLiteral("HEX") && !probe.found && watch.count > 0
        && watch.isAcknowledgedOnly && !hasLineErrors(probe);
    return probe;
}

QString likelyCause(const Probe& probe)
{
    if (!probe.isAsked && !probe.isKept)
        return devices::isTcpName(probe.port)
            ? tr("see to the network, and to what listens there")
            : tr("plug it in, or name another one; frctl detect lists the ports");
    if (!probe.isAsked)
        return tr("frctl doctor tells who has the port, and whether this user may open it");
    if (hasLineErrors(probe))
        return tr("bytes came with another speed or parity (%1 framing, %2 parity errors): set the "
                  "register to 115200 baud, 8 data bits, no parity")
            .arg(probe.lineErrors->framing)
            .arg(probe.lineErrors->parity);
    if (probe.isAtWork)
        return tr("a register is at work there; ask again later");
    if (probe.receivedBytes > 0)
        return tr("%1 bytes came that are no answer: the other protocol, or another device")
            .arg(probe.receivedBytes);
    if (probe.isLineGone)
        return tr("the other end has closed the line: it serves another program, or is no register");
    return tr("silence: no power, the cable, the other protocol, or another device");
}

} // namespace frctl
