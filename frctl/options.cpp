#include "options.h"

#include "commandline.h"
#include "errors.h"
#include "optiontable.h"
#include "portname.h"

#include <algorithm>

namespace frctl {

namespace {

void apply(const Setting& setting, Options& options)
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

/// What options mean for each other.
void settle(Options& options)
{
    if (!options.isGiven(QStringLiteral("exclusive")))
        options.isExclusive = !devices::isTcpName(options.port);
    if (!options.strict)
        return;
    if (options.isGiven(QStringLiteral("marks")) && options.markPolicy != sale::MarkPolicy::Strict)
        throw UsageError(QStringLiteral(
            "--strict contradicts another --marks: with it marking codes are judged strictly"));
    options.markPolicy = sale::MarkPolicy::Strict;
}

} // namespace

void Options::requireCashier() const
{
    if (cashier.name.isEmpty())
        throw UsageError(QStringLiteral("%1 needs a cashier: --cashier").arg(command));
}

sale::DeskOptions Options::desk() const
{
    return {line(), registerName(), cashier, markPolicy};
}

QString Options::registerName() const
{
    return devices::isTcpName(port) ? port : devices::devicePath(port);
}

bool Options::isGiven(const QString& option) const
{
    return std::any_of(settings.cbegin(), settings.cend(),
        [&option](const Setting& setting) { return option == QLatin1String(setting.option->name); });
}

Options parseOptions(const QStringList& commandLine)
{
    const CommandLine given = readCommandLine(commandLine);
    Options options;
    options.settings = given.options;
    for (const Setting& setting : given.options)
        apply(setting, options);
    options.arguments = given.words;
    if (!options.arguments.isEmpty())
        options.command = options.arguments.takeFirst();
    settle(options);
    return options;
}

} // namespace frctl
