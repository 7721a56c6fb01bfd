#include "registerprobe.h"

#include "abstractfrdriver.h"
#include "connectionerror.h"
#include "deviceinfo.h"
#include "exceptions.h"
#include "frctltr.h"
#include "interruption.h"
#include "lineobserver.h"
#include "options.h"
#include "progress.h"
#include "registerconnection.h"

namespace frctl {

namespace {

/// A register answers the first question within a second or two; a driver would ask for a minute and more.
constexpr int probeMs = 4000;

class ByteCount : public devices::LineObserver
{
public:
    void opened() override { }
    void sent(const QByteArray&) override { }
    void received(const QByteArray& bytes) override { count += bytes.size(); }
    void failed(const QString&) override { }

    qint64 count = 0;
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

FoundRegister identify(AbstractFrDriver& driver, bool isHex)
{
    driver.connect();
    const DeviceInfo info = driver.getDeviceInfo();
    return {info.getModelName(), info.getNumber().trimmed(), info.getFirmwareVersion(),
        isHex ? innOf(driver) : QString()};
}

void askOver(const devices::ConnectionSettings& settings, Probe& probe)
{
    devices::RegisterConnection connection(settings);
    probe.isAsked = true;
    try {
        probe.found = identify(connection.driver(), probe.protocol == QStringLiteral("HEX"));
        connection.leaveIdle();
    } catch (const BasicException& error) {
        probe.failure = error.tr().ru();
    }
    probe.lineErrors = connection.lineErrors();
}

bool hasLineErrors(const Probe& probe)
{
    return probe.lineErrors && (probe.lineErrors->framing > 0 || probe.lineErrors->parity > 0);
}

} // namespace

Probe probe(const Options& options, const QString& port, const QString& protocol)
{
    const Progress progress(tr("%1: asking over %2").arg(port, protocol));
    ByteCount bytes;
    devices::ConnectionSettings settings = options.connection();
    settings.port = port;
    settings.protocol = protocol;
    settings.waitCallback = throwIfInterrupted;
    settings.budgetMs = probeMs;
    settings.observer = &bytes;
    Probe probe{.port = port, .protocol = protocol};
    try {
        askOver(settings, probe);
    } catch (const devices::ConnectionError& error) {
        if (error.reason() == devices::ConnectionError::NoPlugin)
            throw;
        probe.failure = QString::fromUtf8(error.what());
    } catch (const BasicException& error) {
        probe.failure = error.tr().ru();
    }
    probe.receivedBytes = bytes.count;
    return probe;
}

QString likelyCause(const Probe& probe)
{
    if (!probe.isAsked)
        return tr("frctl doctor tells who has the port, and whether this user may open it");
    if (hasLineErrors(probe))
        return tr("bytes came with another speed or parity (%1 framing, %2 parity errors): set the "
                  "register to 115200 baud, 8 data bits, no parity")
            .arg(probe.lineErrors->framing)
            .arg(probe.lineErrors->parity);
    if (probe.receivedBytes > 0)
        return tr("%1 bytes came that are no answer: the other protocol, or another device")
            .arg(probe.receivedBytes);
    return tr("silence: no power, the cable, the other protocol, or another device");
}

} // namespace frctl
