#include "verb.h"

#include "command.h"
#include "errors.h"
#include "frctltr.h"
#include "optiontable.h"

#include <algorithm>

namespace frctl {

namespace {

/// As the help of its command shows it: there may be several ways.
QString usageOf(const QString& verb)
{
    QStringList ways;
    const QString command = verb.section(QLatin1Char(' '), 0, 0);
    for (const Subcommand& subcommand : requireCommand(command).subcommands) {
        const QString signature = QLatin1String(subcommand.signature);
        if (signature == verb || signature.startsWith(verb + QLatin1Char(' ')))
            ways.append(signature);
    }
    return ways.join(QStringLiteral(" | "));
}

/// An option of another one would be taken for one that is heeded.
void refuseMisplaced(const Verb& verb, const QString& name, const Options& options)
{
    const QStringList known = QString::fromLatin1(verb.options).split(QLatin1Char(' '));
    for (const Setting& setting : options.settings) {
        const OptionRow& option = *setting.option;
        if (option.group == OptionRow::Own && setting.origin.isEmpty()
            && !known.contains(QLatin1String(option.name)))
            throw UsageError(tr("%1 takes no --%2").arg(name, QLatin1String(option.name)));
    }
}

} // namespace

Task prepareVerb(std::span<const Verb> verbs, const Options& options)
{
    const QString given = options.arguments.constFirst();
    requireAction(options.command, given);
    const auto verb = std::find_if(verbs.begin(), verbs.end(),
        [&given](const Verb& known) { return given == QLatin1String(known.name); });
    const QString name = options.command + QLatin1Char(' ') + given;
    const qsizetype count = options.arguments.size() - 1;
    if (count < verb->leastArguments || count > verb->mostArguments)
        throw UsageError(tr("wrong number of arguments: %1").arg(usageOf(name)));
    refuseMisplaced(*verb, name, options);
    return verb->prepare(options);
}

} // namespace frctl
