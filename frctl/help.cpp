#include "help.h"

#include "errors.h"
#include "frctltr.h"
#include "optiontable.h"

namespace frctl {

namespace {

constexpr int helpColumn = 26;

/// Name and what it is for, which begins on a line of its own behind a name that is too long.
QString helpEntry(const QString& name, const QString& help)
{
    const QString gap = name.size() > helpColumn
        ? QLatin1Char('\n') + QString(helpColumn + 2, QLatin1Char(' '))
        : QString();
    return QStringLiteral("  %1%2 %3\n").arg(name.leftJustified(helpColumn), gap, help);
}

QString optionEntry(const OptionRow& row)
{
    QString name = QStringLiteral("--") + QLatin1String(row.name);
    if (row.letter != 0)
        name = QStringLiteral("-%1, ").arg(QLatin1Char(row.letter)) + name;
    if (!row.isSwitch())
        name += QLatin1Char(' ') + QLatin1String(row.value);
    return helpEntry(name, tr(row.help));
}

/// A heading and the options for which takes is true; nothing without any.
template <typename Takes>
QString optionEntries(const QString& heading, const Takes& takes)
{
    QString text;
    for (const OptionRow& row : optionRows()) {
        if (takes(row))
            text += optionEntry(row);
    }
    return text.isEmpty() ? text : QStringLiteral("\n%1:\n").arg(heading) + text;
}

QString signature(const Command& command)
{
    return QString(QLatin1String(command.name) + QLatin1Char(' ') + QLatin1String(command.arguments))
        .trimmed();
}

QString optionsOf(const Command& command)
{
    const auto isOwn = [&command](const OptionRow& row) {
        return command.takes(row) && (row.group == OptionRow::Own || row.group == OptionRow::Document);
    };
    const auto isOfLine
        = [&command](const OptionRow& row) { return command.takes(row) && row.group == OptionRow::Line; };
    return optionEntries(tr("Its options"), isOwn) + optionEntries(tr("The register"), isOfLine)
        + optionEntries(tr("Options of all commands"),
            [](const OptionRow& row) { return row.group == OptionRow::Common; });
}

QString subcommandEntries(const Command& command)
{
    QString text;
    for (const Subcommand& subcommand : command.subcommands)
        text += helpEntry(QLatin1String(subcommand.signature), tr(subcommand.help));
    return text.isEmpty() ? text : tr("\nWhat it does:\n") + text;
}

/// The whole of a receipt that any register takes. The schema has it, too.
const char* const smallReceipt = R"({
  "type": "sell",
  "taxationType": "osn",
  "operator": { "name": "Иванова А. П." },
  "items": [
    { "name": "Хлеб", "price": 64.90, "quantity": 2, "amount": 129.80, "tax": { "type": "vat10" } }
  ],
  "payments": [{ "type": "cash", "sum": 200.00 }]
})";

QString noteOf(const Command& command)
{
    if (command.note == nullptr)
        return {};
    const QString text = tr(command.note) + QLatin1Char('\n');
    if (!command.takesReceipt())
        return text;
    QString example = QString::fromUtf8(smallReceipt);
    if (qstrcmp(command.name, "refund") == 0)
        example.replace(QStringLiteral("\"sell\""), QStringLiteral("\"sellReturn\""));
    return text + example + QLatin1Char('\n');
}

QString failureText(const Command& command)
{
    if (command.failure != nullptr)
        return tr(command.failure);
    return command.kind == Command::Alone
        ? tr("failed, or the output was lost")
        : tr("the register or its line failed or refused, or the output was lost");
}

QString exitStatuses(const Command& command)
{
    QString text = tr("\nExit status:\n") + helpEntry(QStringLiteral("0"), tr("done"))
        + helpEntry(QStringLiteral("1"), failureText(command))
        + helpEntry(QStringLiteral("2"), tr("wrong usage or a wrong file; nothing was sent"));
    if (command.makesDocument())
        text += helpEntry(QStringLiteral("3"),
                    tr("the close failed, but the document was issued: do not repeat it"))
            + helpEntry(QStringLiteral("4"),
                tr("the close failed and the document was not issued: it may be repeated"))
            + helpEntry(QStringLiteral("5"),
                tr("the close failed, unknown whether it was issued: look at the register first"));
    if (command.isInterruptible())
        text += helpEntry(QStringLiteral("130"), tr("interrupted"));
    return text;
}

QString overview()
{
    QString text = usageLine() + tr("\nWorks a fiscal register through its driver plugin.\n\nCommands:\n");
    for (const Command& command : commands())
        text += helpEntry(signature(command), tr(command.help));
    text += optionEntries(tr("Options of the commands that work a register"),
        [](const OptionRow& row) { return row.group == OptionRow::Line; });
    text += optionEntries(tr("Options of the commands that make a document"),
        [](const OptionRow& row) { return row.group == OptionRow::Document; });
    text += optionEntries(
        tr("Options of all commands"), [](const OptionRow& row) { return row.group == OptionRow::Common; });
    return text + exitStatuses(requireCommand(QStringLiteral("sell")))
        + tr(
            "\nOptions stand anywhere. frctl help COMMAND tells the options of that command and an example.");
}

QString helpPage(const Command& command)
{
    const QString line
        = command.kind == Command::Alone ? QString() : QStringLiteral("--port /dev/ttyUSB0 --protocol HEX ");
    return usageLine(signature(command)) + QStringLiteral("\n%1\n").arg(tr(command.help)) + noteOf(command)
        + subcommandEntries(command) + optionsOf(command) + exitStatuses(command)
        + tr("\nExample:\n  frctl %1%2").arg(line, QString::fromUtf8(command.example));
}

} // namespace

QString usageLine(const QString& command)
{
    return tr("Usage: frctl [OPTION]... ") + (command.isEmpty() ? tr("COMMAND [ARGUMENT]...") : command);
}

QString helpText(const QString& command)
{
    return command.isEmpty() ? overview() : helpPage(requireCommand(command));
}

Task prepareHelp(const Options& options)
{
    const QString command = options.arguments.value(0);
    // "help trace show" is the help of trace.
    if (options.arguments.size() > 1)
        requireAction(command, options.arguments.at(1));
    const QString text = helpText(command);
    return alone([text] { return plainText(text); });
}

} // namespace frctl
