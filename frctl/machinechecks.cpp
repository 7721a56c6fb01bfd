#include "machinechecks.h"

#include "connectionerror.h"
#include "detectedport.h"
#include "driverplugin.h"
#include "frctltr.h"
#include "journalerror.h"
#include "options.h"
#include "portlisting.h"
#include "portname.h"
#include "portrights.h"
#include "usbport.h"

#include <QFileInfo>

#include <unistd.h>

#include <algorithm>

namespace frctl {

namespace {

using Ports = QList<devices::PortInfo>;

/// The ports for which it is so, by their paths.
template <typename Matches>
QStringList pathsWhere(const Ports& ports, const Matches& matches)
{
    QStringList paths;
    for (const devices::PortInfo& port : ports) {
        if (matches(port))
            paths.append(port.path);
    }
    return paths;
}

QString joined(const QStringList& texts)
{
    return texts.join(QStringLiteral(", "));
}

HealthCheck checkPlugin(const Options& options)
{
    try {
        const devices::DriverPlugin plugin = devices::findDriverPlugin(options.plugins);
        devices::createDeviceObject(plugin);
        return well("plugin", plugin.fileName);
    } catch (const devices::ConnectionError& error) {
        return wrong("plugin", QString::fromUtf8(error.what()),
            tr("install frspf-plugin, or name its folder: --plugin, FRSPF_PLUGIN_PATH"));
    }
}

bool isLocked(const devices::PortInfo& port)
{
    return ::access(QFile::encodeName(port.path).constData(), R_OK | W_OK) != 0;
}

HealthCheck checkPresence(const Ports& ports)
{
    if (ports.isEmpty())
        return untold("port", tr("no serial port here"));
    const QStringList missing = pathsWhere(ports, [](const devices::PortInfo& port) {
        return !devices::isTcpName(port.path) && !QFileInfo::exists(port.path);
    });
    if (!missing.isEmpty())
        return wrong(
            "port", tr("there is no ") + joined(missing), tr("plug it in; frctl detect lists the ports"));
    return well("port", joined(pathsWhere(ports, [](const devices::PortInfo&) { return true; })));
}

HealthCheck checkRights(const Ports& ports)
{
    const QStringList locked = pathsWhere(
        ports, [](const devices::PortInfo& port) { return QFileInfo::exists(port.path) && isLocked(port); });
    if (locked.isEmpty())
        return well("permissions", tr("this user may open what is there"));
    QStringList advice;
    for (const QString& path : locked)
        advice.append(portAdvice(path, rightsOf(path)));
    advice.removeDuplicates();
    return wrong(
        "permissions", tr("this user may not open ") + joined(locked), advice.join(QStringLiteral("; ")));
}

HealthCheck checkFree(const Ports& ports)
{
    QStringList held;
    for (const devices::PortInfo& port : ports) {
        const QList<devices::PortHolder> holders = devices::portHolders(port.path);
        if (!holders.isEmpty())
            held.append(QStringLiteral("%1: %2").arg(port.path, holdersText(holders)));
    }
    if (held.isEmpty())
        return well("portFree", tr("no other program of this user has a port open"));
    return wrong("portFree", joined(held), tr("end that program, or use --wait"));
}

HealthCheck checkModemManager(const Ports& ports)
{
    if (devices::programsNamed(QStringLiteral("ModemManager")).isEmpty())
        return well("modemManager", tr("does not run"));
    const QStringList asked = pathsWhere(
        ports, [](const devices::PortInfo& port) { return isUsb(port) && !isLeftAloneByModemManager(port); });
    if (asked.isEmpty())
        return well("modemManager", tr("runs, and leaves these ports alone"));
    return wrong("modemManager", tr("it sends to ") + joined(asked),
        tr("sudo systemctl disable --now ModemManager, or name the adapter in the udev rule of "
           "frspf-tools"));
}

HealthCheck checkBraille(const Ports& ports)
{
    const bool isRunning = !devices::programsNamed(QStringLiteral("brltty")).isEmpty();
    if (!isRunning)
        return well("brltty", tr("does not run"));
    if (std::none_of(ports.cbegin(), ports.cend(), isUsb))
        return well("brltty", tr("runs, and there is no USB port here"));
    return wrong("brltty", tr("it takes USB adapters for braille displays, and their ports vanish"),
        QStringLiteral("sudo apt remove brltty")); // untranslated: a command line
}

HealthCheck checkAutosuspend(const Ports& ports)
{
    const auto isAsleep = [](const devices::PortInfo& port) { return isUsb(port) && isAutosuspended(port); };
    const QStringList asleep = pathsWhere(ports, isAsleep);
    if (asleep.isEmpty())
        return well("autosuspend", tr("no USB adapter is powered down"));
    const auto first = std::find_if(ports.cbegin(), ports.cend(), isAsleep);
    return wrong("autosuspend", tr("the system may power down ") + joined(asleep),
        tr("echo on | sudo tee %1, or name the adapter in the udev rule of frspf-tools")
            .arg(powerControlOf(*first)));
}

HealthCheck checkJournal(const Options& options)
{
    try {
        if (!options.journal->exists()) {
            options.journal->requirePlace();
            return well("journal", tr("none yet"));
        }
        const QStringList damages = options.journal->store().damages();
        const QString file = options.journal->store().place();
        if (damages.isEmpty())
            return well("journal", file + tr(" is sound"));
        return wrong("journal", QStringLiteral("%1: %2").arg(file, joined(damages)),
            tr("sell nothing more with it: take the last copy of frctl journal backup"));
    } catch (const sale::JournalError& error) {
        return wrong("journal", error.fault(), error.advice());
    }
}

} // namespace

QList<HealthCheck> machineChecks(const Options& options)
{
    const Ports ports
        = options.port.isEmpty() ? devices::listPorts() : Ports{devices::portInfo(options.port)};
    return {checkPlugin(options), checkPresence(ports), checkRights(ports), checkFree(ports),
        checkModemManager(ports), checkBraille(ports), checkAutosuspend(ports), checkJournal(options)};
}

} // namespace frctl
