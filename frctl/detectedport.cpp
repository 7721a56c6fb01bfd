#include "detectedport.h"

#include "documentanswer.h"
#include "frctltr.h"
#include "portname.h"
#include "shellquotes.h"

#include <QJsonArray>
#include <QRegularExpression>

namespace frctl {

namespace {

QString shellWord(const QString& word)
{
    static const QRegularExpression harmless(QStringLiteral("^[A-Za-z0-9_/.:=@%+,-]+$"));
    return harmless.match(word).hasMatch() ? word : shellQuoted(word);
}

QJsonArray holdersJson(const QList<devices::PortHolder>& holders)
{
    QJsonArray json;
    for (const devices::PortHolder& holder : holders)
        json.append(
            QJsonObject{{QStringLiteral("process"), holder.process}, {QStringLiteral("name"), holder.name}});
    return json;
}

QJsonValue foundJson(const Probe* probe)
{
    if (probe == nullptr)
        return {};
    return QJsonObject{{QStringLiteral("protocol"), probe->protocol},
        {QStringLiteral("model"), probe->found->model},
        {QStringLiteral("serialNumber"), probe->found->serial},
        {QStringLiteral("firmware"), probe->found->firmware},
        {QStringLiteral("inn"), sale::textOrNull(probe->found->inn)}};
}

QJsonObject attemptJson(const Probe& probe)
{
    const auto count = [&probe](int devices::LineErrors::*member) {
        return probe.lineErrors ? QJsonValue((*probe.lineErrors).*member) : QJsonValue();
    };
    return {{QStringLiteral("protocol"), probe.protocol},
        {QStringLiteral("answered"), probe.found.has_value()},
        {QStringLiteral("text"), sale::textOrNull(probe.failure)},
        {QStringLiteral("likelyCause"), probe.found ? QJsonValue() : QJsonValue(likelyCause(probe))},
        {QStringLiteral("receivedBytes"), probe.receivedBytes},
        {QStringLiteral("framingErrors"), count(&devices::LineErrors::framing)},
        {QStringLiteral("parityErrors"), count(&devices::LineErrors::parity)}};
}

QString foundLine(const Probe& probe)
{
    const FoundRegister& found = *probe.found;
    return tr("%1: %2, serial number %3, firmware %4%5, over %6")
        .arg(probe.port, found.model, found.serial, found.firmware,
            found.inn.isEmpty() ? QString() : tr(", INN ") + found.inn, probe.protocol);
}

QStringList secondConnectionLines(const DetectedPort& port)
{
    if (!devices::isTcpName(port.info.path))
        return {};
    return {port.info.path + QStringLiteral(": ") + secondConnectionText(port.secondConnection)};
}

/// Nothing where it is not known: a line is this machine's, by its lock.
std::optional<bool> isExclusive(const DetectedPort& port)
{
    if (!port.secondConnection)
        return std::nullopt;
    return *port.secondConnection == SecondConnection::EndsTheFormer;
}

QStringList exclusiveLines(const DetectedPort& port)
{
    if (!devices::isTcpName(port.lastingName()))
        return {QStringLiteral("exclusive = yes")};
    const std::optional<bool> exclusive = isExclusive(port);
    if (!exclusive)
        return {QStringLiteral("# exclusive = yes")}; // untranslated: a file
    if (!*exclusive)
        return {QStringLiteral("exclusive = no")};
    // Who else may reach a network address nobody here knows.
    // untranslated: a file
    return {QStringLiteral("# \"no\" where others than services with this journal work it"),
        QStringLiteral("exclusive = yes")};
}

/// What both configurations call by the same names.
QStringList identityLines(const DetectedPort& port)
{
    const Probe& probe = *port.found();
    QStringList lines{QStringLiteral("port = %1").arg(port.lastingName()),
        QStringLiteral("protocol = %1").arg(probe.protocol),
        QStringLiteral("serial = %1").arg(probe.found->serial)};
    if (!probe.found->inn.isEmpty())
        lines.append(QStringLiteral("inn = %1").arg(probe.found->inn));
    return lines;
}

} // namespace

DetectedPort detectedPort(const devices::PortInfo& info, const QString& givenName)
{
    DetectedPort port{.info = info, .holders = devices::portHolders(info.path)};
    // A link that the caller has made is kept rather than where it leads to.
    const QString path = devices::devicePath(givenName);
    if (!givenName.isEmpty() && !devices::isTcpName(givenName) && path != info.path)
        port.givenName = path;
    return port;
}

QString holdersText(const QList<devices::PortHolder>& holders)
{
    QStringList texts;
    for (const devices::PortHolder& holder : holders)
        texts.append(tr("%1 (process %2)").arg(holder.name).arg(holder.process));
    return texts.join(QStringLiteral(", "));
}

QStringList portLines(const DetectedPort& port)
{
    if (!port.holders.isEmpty())
        return {tr("%1: not asked, %2 works it").arg(port.info.path, holdersText(port.holders))};
    if (port.found() != nullptr)
        return QStringList{foundLine(*port.found())} + secondConnectionLines(port);
    if (port.isAtWork()) {
        const Probe& probe = port.probes.constLast();
        return {tr("%1: no answer over %2: %3").arg(probe.port, probe.protocol, likelyCause(probe))};
    }
    QStringList lines;
    for (const Probe& probe : port.probes)
        lines.append(tr("%1: no register over %2: %3; %4")
                         .arg(probe.port, probe.protocol, probe.failure, likelyCause(probe)));
    return lines;
}

QJsonObject portJson(const DetectedPort& port, qsizetype number)
{
    const devices::PortInfo& info = port.info;
    QJsonArray attempts;
    for (const Probe& probe : port.probes)
        attempts.append(attemptJson(probe));
    const bool isFound = port.found() != nullptr;
    const std::optional<bool> exclusive = isExclusive(port);
    return {{QStringLiteral("port"), info.path},
        {QStringLiteral("manufacturer"), sale::textOrNull(info.manufacturer)},
        {QStringLiteral("description"), sale::textOrNull(info.description)},
        {QStringLiteral("serialNumber"), sale::textOrNull(info.serialNumber)},
        {QStringLiteral("vendorId"), sale::textOrNull(info.vendorId)},
        {QStringLiteral("productId"), sale::textOrNull(info.productId)},
        {QStringLiteral("byId"), sale::textOrNull(info.byId)},
        {QStringLiteral("byPath"), sale::textOrNull(info.byPath)},
        {QStringLiteral("lastingName"), port.lastingName()},
        {QStringLiteral("holders"), holdersJson(port.holders)},
        {QStringLiteral("register"), foundJson(port.found())},
        {QStringLiteral("exclusive"), exclusive ? QJsonValue(*exclusive) : QJsonValue()},
        {QStringLiteral("attempts"), attempts},
        {QStringLiteral("command"), isFound ? QJsonValue(commandLineFor(port)) : QJsonValue()},
        {QStringLiteral("section"),
            isFound ? QJsonValue(sectionFor(port, number).join(QLatin1Char('\n'))) : QJsonValue()},
        {QStringLiteral("serviceSection"),
            isFound ? QJsonValue(serviceSectionFor(port, number).join(QLatin1Char('\n'))) : QJsonValue()}};
}

QString commandLineFor(const DetectedPort& port)
{
    const Probe& probe = *port.found();
    return QStringLiteral("frctl --port %1 --protocol %2 --expect-serial %3 status")
        .arg(shellWord(port.lastingName()), probe.protocol, shellWord(probe.found->serial));
}

QStringList sectionFor(const DetectedPort& port, qsizetype number)
{
    return QStringList{QStringLiteral("[till%1]").arg(number)} + identityLines(port);
}

QStringList serviceSectionFor(const DetectedPort& port, qsizetype number)
{
    // untranslated: a file
    return QStringList{QStringLiteral("[register till%1]").arg(number)}
    + identityLines(port)
        // untranslated: a file
        + exclusiveLines(port)
        + QStringList{QStringLiteral("# cashier = Иванова А. П."),
            QStringLiteral("# allow-test-drive = yes")}; // untranslated: a file
}

} // namespace frctl
