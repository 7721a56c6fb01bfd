#include "completion.h"
#include "optiontable.h"
#include "shellquotes.h"

namespace frctl {

namespace {

const char* const zshFrame = R"(#compdef frctl
# zsh completion for frctl: made from its table of commands by "frctl completion zsh".
_frctl() {
    local context state line
    typeset -A opt_args
    local -a shared commands
    shared=(
%1    )
    commands=(
%2    )
    _arguments -C $shared '1:command:->command' '*::argument:->argument'
    case $state in
        command) _describe command commands ;;
        argument)
            case $words[1] in
%3            esac ;;
    esac
}
_frctl "$@")";

QString zshAction(const Offer& offer)
{
    if (!offer.words.isEmpty())
        return QStringLiteral("(%1)").arg(offer.words.join(QLatin1Char(' ')));
    return offer.withFiles ? QStringLiteral("_files") : QString();
}

QString optionSpec(const OptionRow& row)
{
    QString help = QString::fromUtf8(row.help);
    for (const char bracket : {'[', ']'})
        help.replace(QLatin1Char(bracket), QLatin1Char('\\') + QString(QLatin1Char(bracket)));
    const QString name = QStringLiteral("--") + QLatin1String(row.name);
    if (row.isSwitch())
        return shellQuoted(QStringLiteral("%1[%2]").arg(name, help));
    const QString action = qstrcmp(row.name, "register") == 0
        ? QStringLiteral("($(frctl config list 2>/dev/null))")
        : zshAction(offerOf(row.value));
    const QString shown = QString::fromUtf8(row.value).replace(QLatin1Char('|'), QLatin1Char(' '));
    return shellQuoted(QStringLiteral("*%1=[%2]:%3:%4").arg(name, help, shown, action));
}

template <typename Takes>
QString optionSpecs(const QString& gap, const Takes& takes)
{
    QString specs;
    for (const OptionRow& row : optionRows()) {
        if (takes(row))
            specs += gap + optionSpec(row);
    }
    return specs;
}

QString commandEntries()
{
    QString entries;
    for (const Command& command : commands())
        entries += QStringLiteral("        %1\n")
                       .arg(shellQuoted(
                           QLatin1String(command.name) + QLatin1Char(':') + QLatin1String(command.help)));
    return entries;
}

QString argumentSpecs(const Offer& offer)
{
    QString specs;
    if (!offer.words.isEmpty())
        specs = QStringLiteral(" '1:argument:%1'").arg(zshAction(offer));
    if (offer.withFiles)
        specs += QStringLiteral(" '*:file:_files'");
    return specs;
}

QString zshCases()
{
    QString cases;
    for (const Command& command : commands()) {
        const QString own = optionSpecs(QStringLiteral(" "),
            [&command](const OptionRow& row) { return row.group == OptionRow::Own && command.takes(row); });
        cases += QStringLiteral("                %1) _arguments $shared%2%3 ;;\n")
                     .arg(QLatin1String(command.name), own, argumentSpecs(offerOf(command.arguments)));
    }
    return cases;
}

} // namespace

QString zshCompletion()
{
    const QString shared = optionSpecs(
        QStringLiteral("\n        "), [](const OptionRow& row) { return row.group != OptionRow::Own; });
    return QString::fromUtf8(zshFrame).arg(shared.mid(1) + QLatin1Char('\n'), commandEntries(), zshCases());
}

} // namespace frctl
