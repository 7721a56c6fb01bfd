#include "options.h"

#include "commandline.h"
#include "configuration.h"
#include "errors.h"
#include "frctltr.h"
#include "optiontable.h"
#include "portname.h"
#include "showntext.h"

#include <QMap>

#include <algorithm>

namespace frctl {

namespace {

bool isGivenIn(const Settings& settings, const char* option)
{
    return std::any_of(settings.cbegin(), settings.cend(),
        [option](const Setting& setting) { return qstrcmp(option, setting.option->name) == 0; });
}

/// What the section of the configuration says, as far as the command line does not say it.
Settings sectionSettings(const Settings& given)
{
    Options named;
    for (const Setting& setting : given) {
        if (isGivenIn({setting}, "register") || isGivenIn({setting}, "config"))
            applySetting(setting, named);
    }
    if (named.registerSection.isEmpty())
        return {};
    Settings settings = Configuration(named.configFile).require(named.registerSection).settings;
    settings.removeIf([&given](const Setting& setting) { return isGivenIn(given, setting.option->name); });
    return settings;
}

/// The last one would win, and whoever wrote the others would not know it.
void refuseContradictions(const Settings& given)
{
    QMap<const OptionRow*, QString> values;
    for (const Setting& setting : given) {
        const auto known = values.constFind(setting.option);
        if (known != values.cend() && !setting.option->isRepeatable && *known != setting.value)
            throw UsageError(tr("--%1 is given twice: %2 and %3")
                                 .arg(QLatin1String(setting.option->name), receipt::shownText(*known),
                                     receipt::shownText(setting.value)));
        values.insert(setting.option, setting.value);
    }
}

/// Over XML nothing tells the register's tax number: one that was to be compared would not be.
void refuseInnOverXml(const Settings& settings)
{
    for (const Setting& setting : settings) {
        if (!isGivenIn({setting}, "expect-inn"))
            continue;
        if (setting.origin.isEmpty())
            throw UsageError(tr("--expect-inn: over XML the register is known by --expect-serial alone"));
        throw UsageError(tr("%1: over XML the register is known by its serial number alone: serial = ...")
                             .arg(setting.origin));
    }
}

/// A port that is a service's register.
void settleService(Options& options)
{
    options.service = servicePortOf(options.port);
    if (isServiceName(options.port) && !options.service)
        throw UsageError(tr("--port: \"%1\" is neither service:NAME nor service://HOST:PORT/NAME")
                             .arg(receipt::shownText(options.port)));
    if (!options.service && !options.tokenFile.isEmpty())
        throw UsageError(tr("--token-file goes with a port of a service: service:NAME"));
}

/// What options mean for each other.
void settle(Options& options)
{
    settleService(options);
    if (!options.isGiven("exclusive"))
        options.isExclusive = !devices::isTcpName(options.port);
    if (!options.isHex() && options.expected.serial.isEmpty() && !options.expected.inn.isEmpty())
        refuseInnOverXml(options.settings);
    if (options.isTraceFull && options.traceFile.isEmpty())
        throw UsageError(tr("--trace-full goes with --trace"));
    if (!options.strict)
        return;
    if (options.isGiven("marks") && options.markPolicy != sale::MarkPolicy::Strict)
        throw UsageError(
            tr("--strict contradicts another --marks: with it marking codes are judged strictly"));
    options.markPolicy = sale::MarkPolicy::Strict;
}

} // namespace

void applySetting(const Setting& setting, Options& options)
{
    try {
        setting.option->read(setting.value, options);
    } catch (const UsageError& error) {
        const QString place = setting.origin.isEmpty()
            ? QStringLiteral("--") + QLatin1String(setting.option->name)
            : setting.origin;
        throw UsageError(place + QStringLiteral(": ") + QString::fromUtf8(error.what()));
    }
}

void Options::requireCashierOption() const
{
    if (cashier.name.isEmpty())
        throw UsageError(tr("%1 needs a cashier: --cashier").arg(command));
}

sale::RegisterLine Options::line() const
{
    sale::RegisterLine line(
        receiptProtocol(), isExclusive, [told = soleConnection] { return *told ? (*told)() : 0; });
    line.repeats = [told = repeats] { return *told ? (*told)() : 0; };
    line.expected = expected;
    return line;
}

sale::DeskOptions Options::desk() const
{
    return {line(), registerName(), cashier, markPolicy};
}

devices::ConnectionSettings Options::connection() const
{
    return {.port = port,
        .protocol = protocol,
        .plugins = plugins,
        .waitSeconds = waitSeconds,
        .protocolVersion = protocolVersion,
        .deviceId = deviceId,
        .speedEnumerate = speedEnumerate,
        .driverOptions = driverOptions};
}

QString Options::registerName() const
{
    return devices::isTcpName(port) ? port : devices::devicePath(port);
}

bool Options::isGiven(const char* option) const
{
    return isGivenIn(settings, option);
}

Options parseOptions(const QStringList& commandLine)
{
    const CommandLine given = readCommandLine(commandLine);
    refuseContradictions(given.options);
    Options options;
    options.settings = given.options;
    // Help is to be had also with a configuration that is wrong.
    if (!options.isGiven("help") && !options.isGiven("version"))
        options.settings = sectionSettings(given.options) + given.options;
    for (const Setting& setting : options.settings)
        applySetting(setting, options);
    options.arguments = given.words;
    if (!options.arguments.isEmpty())
        options.command = options.arguments.takeFirst();
    settle(options);
    return options;
}

} // namespace frctl
