#include "detectcommand.h"

#include "detectedport.h"
#include "errors.h"
#include "frctltr.h"
#include "interruption.h"
#include "linetrace.h"
#include "messages.h"
#include "options.h"
#include "portlisting.h"
#include "portname.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"
#include "texttable.h"

#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

namespace frctl {

namespace {

QStringList protocolsOf(const Options& options)
{
    if (options.isGiven("protocol"))
        return {options.protocol};
    return {QStringLiteral("XML"), QStringLiteral("HEX")};
}

/// The other protocol would disturb a register at its work.
bool isSettled(const Probe& probe)
{
    return probe.found || probe.isAtWork || !probe.isAsked;
}

/// Asks until one answers.
void askPort(DetectedPort& port, const Options& options, LineTrace* trace)
{
    // What another program works must not be disturbed, and what it is told would be half of an answer.
    if (!port.holders.isEmpty())
        return;
    for (const QString& protocol : protocolsOf(options)) {
        port.probes.append(probe(options, port.info.path, protocol, trace));
        if (isSettled(port.probes.constLast()))
            break;
    }
    if (port.found() != nullptr && devices::isTcpName(port.info.path))
        port.secondConnection = trySecondConnection(options, *port.found(), trace);
}

QStringList namedPorts(const Options& options)
{
    return options.port.isEmpty() || options.isAll ? options.arguments
                                                   : QStringList{options.port} + options.arguments;
}

/// By whatever names.
bool hasPort(const QList<DetectedPort>& ports, const devices::PortInfo& info)
{
    const auto target = [](const QString& path) {
        const QString canonical = QFileInfo(path).canonicalFilePath();
        return canonical.isEmpty() ? path : canonical;
    };
    return std::any_of(ports.cbegin(), ports.cend(),
        [&](const DetectedPort& port) { return target(port.info.path) == target(info.path); });
}

QList<DetectedPort> portsOf(const Options& options)
{
    QList<DetectedPort> ports;
    const QStringList names = namedPorts(options);
    for (const QString& name : names) {
        const devices::PortInfo info = devices::portInfo(name);
        if (!hasPort(ports, info))
            ports.append(detectedPort(info, name));
    }
    if (!names.isEmpty())
        return ports;
    for (const devices::PortInfo& info : devices::listPorts())
        ports.append(detectedPort(info));
    return ports;
}

QStringList tableOf(const QList<DetectedPort>& ports)
{
    QList<QStringList> rows{
        {tr("PORT"), tr("MAKER"), tr("DEVICE"), tr("SERIAL"), tr("HELD BY"), tr("NAME TO KEEP")}};
    for (const DetectedPort& port : ports)
        rows.append({port.info.path, port.info.manufacturer, port.info.description, port.info.serialNumber,
            holdersText(port.holders), port.info.stableName()});
    return textTable(rows);
}

/// Of what was found: how to go on, and what keeps it.
QStringList continuation(const QList<DetectedPort>& ports)
{
    QStringList commands;
    QStringList sections;
    QStringList serviceSections;
    for (const DetectedPort& port : ports) {
        if (port.found() == nullptr)
            continue;
        commands.append(QStringLiteral("  ") + commandLineFor(port));
        sections += QStringList{QString()} + sectionFor(port, commands.size());
        serviceSections += QStringList{QString()} + serviceSectionFor(port, commands.size());
    }
    if (commands.isEmpty())
        return {};
    return QStringList{QString(), tr("To go on:")} + commands
        + QStringList{QString(), tr("For ~/.config/frspf/frctl.ini or /etc/frspf/frctl.ini:")} + sections
        + QStringList{QString(), tr("For /etc/frspf/frserver.ini, where a service is to own it:")}
    + serviceSections;
}

Output listed(const QList<DetectedPort>& ports)
{
    Output output;
    output.lines = ports.isEmpty() ? QStringList{tr("no serial ports; a pty or tcp:host:port can be named")}
                                   : tableOf(ports);
    output.lines.append(tr(
        "Nothing was asked. frctl detect PORT... asks those ports, --all all of them: bytes may do harm to "
        "scales, card terminals and a UPS."));
    return output;
}

Output asked(const QList<DetectedPort>& ports)
{
    Output output;
    output.status = ExitFailure;
    for (const DetectedPort& port : ports) {
        output.lines += portLines(port);
        if (port.found() != nullptr)
            output.status = ExitSuccess;
    }
    output.lines += continuation(ports);
    return output;
}

QJsonArray portsJson(const QList<DetectedPort>& ports)
{
    QJsonArray json;
    qsizetype found = 0;
    for (const DetectedPort& port : ports) {
        found += port.found() != nullptr ? 1 : 0;
        json.append(portJson(port, found));
    }
    return json;
}

/// False when it was interrupted: what was found until then is told all the same.
bool askPorts(QList<DetectedPort>& ports, const Options& options)
{
    const std::unique_ptr<LineTrace> trace = lineTraceOf(options);
    try {
        for (DetectedPort& port : ports)
            askPort(port, options, trace.get());
        return true;
    } catch (const Interrupted&) {
        complain(tr("interrupted"));
        return false;
    }
}

bool asksPorts(const Options& options)
{
    return options.isAll || !namedPorts(options).isEmpty();
}

Output detect(const Options& options)
{
    const bool isAsking = asksPorts(options);
    QList<DetectedPort> ports = portsOf(options);
    catchInterruptions();
    const bool isWhole = !isAsking || askPorts(ports, options);
    Output output = isAsking ? asked(ports) : listed(ports);
    if (!isWhole)
        output.status = ExitInterrupted;
    output.json = {{QStringLiteral("asked"), isAsking}, {QStringLiteral("ports"), portsJson(ports)}};
    return output;
}

} // namespace

Task prepareDetect(const Options& options)
{
    if (options.isAll && !options.arguments.isEmpty())
        throw UsageError(tr("detect takes ports, or --all, not both"));
    for (const QString& name : namedPorts(options)) {
        if (!devices::createSerialDevice(name))
            throw UsageError(tr("detect: \"%1\" names no port").arg(name));
    }
    Task task = alone([options] { return detect(options); });
    task.isTraced = asksPorts(options);
    return task;
}

} // namespace frctl
