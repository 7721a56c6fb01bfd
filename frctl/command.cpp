#include "command.h"

#include "checkcommand.h"
#include "completion.h"
#include "configcommand.h"
#include "countercommands.h"
#include "detectcommand.h"
#include "doctorcommand.h"
#include "errors.h"
#include "fncommands.h"
#include "frctltr.h"
#include "help.h"
#include "infocommand.h"
#include "journalcommands.h"
#include "namescommand.h"
#include "optiontable.h"
#include "parametercommand.h"
#include "previewcommand.h"
#include "printoutcommands.h"
#include "receiptcommands.h"
#include "reportcommands.h"
#include "schemacommand.h"
#include "servicecommands.h"
#include "suggestion.h"
#include "tracecommands.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace frctl {

namespace {

constexpr qsizetype anyNumber = std::numeric_limits<qsizetype>::max();

constexpr const char* receiptOptions = "id drop split marks";

constexpr const char* receiptNote = QT_TR_NOOP(
    "frctl schema receipt tells the file's format whole, frctl names the words that it may have. A small one:");

constexpr const char* detectNote
    = QT_TR_NOOP("PORT is /dev/ttyUSB0, the link of a pty, or tcp:host:port.\nEach is asked for 4 seconds a "
                 "protocol at most, one after the other, and none that another program has open.");

constexpr Subcommand journalVerbs[] = {
    {"journal list [--state STATE] [--since DATE]",
        QT_TR_NOOP("The documents, in the order they were accepted in.")},
    {"journal show ID", QT_TR_NOOP("One document with its body, its attempts and its verdict.")},
    {"journal settle [ID]",
        QT_TR_NOOP("Ask the register what became of those that were begun and not settled, or of this one.")},
    {"journal resolve ID issued --document N",
        QT_TR_NOOP("An unknown one stands on the tape with that number, a person saw.")},
    {"journal resolve ID not-issued --note TEXT",
        QT_TR_NOOP("An unknown one was not printed, a person saw; it may be sold again.")},
    {"journal export [--state STATE] [--since DATE]",
        QT_TR_NOOP("All of each document, a line of JSON for one.")},
    {"journal backup FILE", QT_TR_NOOP("A sound copy of the journal in a new file.")},
    {"journal anonymise --before DATE",
        QT_TR_NOOP("Take customers and bodies out of what was settled before.")},
    {"journal check", QT_TR_NOOP("Whether the file is sound; with a register also its shift's documents.")},
    {"journal accept [--note TEXT]",
        QT_TR_NOOP("The drive has documents that are not in the journal, and that is as it should be.")},
};

constexpr Subcommand traceVerbs[] = {
    {"trace show FILE", QT_TR_NOOP("The frames in words.")},
    {"trace diff FILE FILE",
        QT_TR_NOOP("How the second differs from the first; exit status 1 when it does.")},
    {"trace replay FILE --as register PORT",
        QT_TR_NOOP(
            "Play its register to any host. PORT is the link of a pty, which is made, or tcp:host:port to listen "
            "on. Exit status 1 when something was refused or did not come.")},
    {"trace replay FILE --as host [PORT]",
        QT_TR_NOOP(
            "Play its host to a register and compare the answers; exit status 1 when they differ. What does more "
            "than ask is done once more: on a test drive alone, unless --force.")},
    {"trace pcapng FILE OUT", QT_TR_NOOP("Write it as a capture file for Wireshark.")},
    {"trace dissector", QT_TR_NOOP("Print the script with which Wireshark reads that file.")},
};

constexpr Command commandTable[] = {
    {"help", "[COMMAND]", QT_TR_NOOP("Show this help, or that of a command."), 0, 2, Command::Alone,
        prepareHelp, "help sell"},
    {"info", "", QT_TR_NOOP("What the plugin says of itself; needs no register."), 0, 0, Command::Alone,
        prepareInfo, "info", "plugin"},
    {"detect", "[PORT...]",
        QT_TR_NOOP(
            "The serial ports of this machine; those named, or with --all each, are asked for a register."),
        0, anyNumber, Command::Alone, prepareDetect, "detect /dev/ttyUSB0",
        "all port register config protocol protocol-version plugin wait device-id trace trace-full", {},
        QT_TR_NOOP("no register at the ports that were asked, or the output was lost"), detectNote, true},
    {"doctor", "", QT_TR_NOOP("What may keep this computer and the register from selling, a line each."), 0,
        0, Command::Alone, prepareDoctor, "--port /dev/ttyUSB0 --protocol HEX doctor",
        "port register config wait protocol expect-serial expect-inn protocol-version plugin exclusive "
        "device-id journal trace trace-full",
        {}, QT_TR_NOOP("something is wrong, or the output was lost"), nullptr, true},
    {"status", "", QT_TR_NOOP("The register's identity, clock, shift and state."), 0, 0, Command::AtRegister,
        prepareStatus, "status"},
    {"open-shift", "", QT_TR_NOOP("Open the shift if it is closed."), 0, 0, Command::Document,
        prepareOpenShift, "--cashier \"Иванова А. П.\" open-shift"},
    {"x-report", "", QT_TR_NOOP("Print the shift's totals."), 0, 0, Command::Document, prepareXReport,
        "--cashier \"Иванова А. П.\" x-report"},
    {"z-report", "", QT_TR_NOOP("Close the shift and print its report."), 0, 0, Command::Document,
        prepareZReport, "--cashier \"Иванова А. П.\" z-report"},
    {"accounting-report", "", QT_TR_NOOP("Print the report on the state of settlements."), 0, 0,
        Command::Document, prepareAccountingReport, "--cashier \"Иванова А. П.\" accounting-report"},
    {"counters", "", QT_TR_NOOP("The shift's sums by payment kind, cash in and cash out."), 0, 0,
        Command::AtRegister, prepareCounters, "--json counters"},
    {"registers", "begin|end", QT_TR_NOOP("The registers for the start or the end of a shift, by position."),
        1, 1, Command::AtRegister, prepareRegisters, "registers end"},
    {"fn", "", QT_TR_NOOP("State of the fiscal drive and of its exchange with the OFD."), 0, 0,
        Command::AtRegister, prepareFn, "fn"},
    {"ofd", "", QT_TR_NOOP("The exchange with the operator of fiscal data."), 0, 0, Command::AtRegister,
        prepareOfd, "ofd"},
    {"print-document", "N", QT_TR_NOOP("Print the fiscal drive's document of that number."), 1, 1,
        Command::Document, preparePrintDocument, "print-document 42"},
    {"print-last-document", "", QT_TR_NOOP("Print the fiscal drive's last document."), 0, 0,
        Command::Document, preparePrintLastDocument, "print-last-document"},
    {"registration", "--tax-systems LIST", QT_TR_NOOP("Register anew with the tax systems of the list."), 0,
        0, Command::Document, prepareRegistration,
        "--cashier \"Иванова А. П.\" registration --tax-systems osn,usnIncome", "tax-systems"},
    {"sell", "FILE", QT_TR_NOOP("Issue the receipt of a JSON file (- for standard input)."), 1, 1,
        Command::Document, prepareReceipt, "--id till-1:42 sell sale.json", receiptOptions, {}, nullptr,
        receiptNote},
    {"refund", "FILE", QT_TR_NOOP("Issue the return receipt of a JSON file (- for standard input)."), 1, 1,
        Command::Document, prepareReceipt, "--id till-1:43 refund return.json", receiptOptions, {}, nullptr,
        receiptNote},
    {"check", "FILE...",
        QT_TR_NOOP("Tell all that would refuse the receipts of JSON files, and all warnings; no register."),
        1, anyNumber, Command::Alone, prepareCheck, "check sale.json",
        "register config protocol cashier cashier-inn drop split", {}, nullptr, receiptNote},
    {"preview", "FILE", QT_TR_NOOP("The receipt of a JSON file as a register prints it; needs no register."),
        1, 1, Command::Alone, preparePreview, "preview sale.json --pdf sale.pdf",
        "register config protocol plugin cashier cashier-inn drop split width png pdf svg", {}, nullptr,
        receiptNote},
    {"cash-in", "SUM", QT_TR_NOOP("Put cash into the drawer."), 1, 1, Command::Document, prepareCashIn,
        "--cashier \"Иванова А. П.\" cash-in 1000"},
    {"cash-out", "SUM", QT_TR_NOOP("Take cash out of the drawer."), 1, 1, Command::Document, prepareCashOut,
        "--cashier \"Иванова А. П.\" cash-out 200.50"},
    {"print", "FILE", QT_TR_NOOP("Print the lines of a text file as a document of no fiscal meaning."), 1, 1,
        Command::Document, preparePrint, "print text.txt"},
    {"cancel", "", QT_TR_NOOP("Cancel the open document (HEX)."), 0, 0, Command::AtRegister, prepareCancel,
        "cancel"},
    {"drawer", "open|state", QT_TR_NOOP("Open the cash drawer, or tell whether it is open."), 1, 1,
        Command::AtRegister, prepareDrawer, "drawer open"},
    {"time", "get|set [TIME]",
        QT_TR_NOOP("The register's clock; set takes 2024-12-31T23:59:59 or the time now."), 1, 2,
        Command::AtRegister, prepareTime, "time get", "force"},
    {"params", "list|get|set|defaults [NAME[=VALUE]...]",
        QT_TR_NOOP(
            "The register's settings; NAME is 6.0 or a caption, over XML section.subsection.parameter."),
        1, anyNumber, Command::AtRegister, prepareParams, "params set 6.0=1", "force"},
    {"header", "FILE", QT_TR_NOOP("Program the header lines of the receipts, 4 at most."), 1, 1,
        Command::AtRegister, prepareHeader, "header header.txt"},
    {"tail", "FILE", QT_TR_NOOP("Program the advertising text at the end of the receipts (HEX)."), 1, 1,
        Command::AtRegister, prepareTail, "tail tail.txt"},
    {"logo", "FILE|--clear", QT_TR_NOOP("Program the header picture, or remove it (HEX)."), 0, 1,
        Command::AtRegister, prepareLogo, "logo logo.png", "clear"},
    {"config", "path|list|show [NAME]",
        QT_TR_NOOP("What the configuration says of the registers, and where it stands; needs no register."),
        0, 2, Command::Alone, prepareConfig, "config show", "register config"},
    {"completion", "bash|zsh", QT_TR_NOOP("What the shell needs to complete command lines of frctl."), 1, 1,
        Command::Alone, prepareCompletion, "completion bash"},
    {"names", "[LIST]",
        QT_TR_NOOP("The words that a receipt may have: taxes, units ...; fields tells the fields."), 0, 1,
        Command::Alone, prepareNames, "names taxes", "protocol"},
    {"schema", "receipt|output", QT_TR_NOOP("The JSON schema of receipts, or of what --json prints."), 1, 1,
        Command::Alone, prepareSchema, "schema receipt"},
    {"journal", "list|show|settle|resolve|export|backup|anonymise|check|accept",
        QT_TR_NOOP("What this machine's journal knows of its documents."), 1, 3, Command::AtRegister,
        prepareJournal, "journal list --state unknown", "state since before document note force",
        journalVerbs},
    {"trace", "show|diff|replay|pcapng|dissector [FILE...]",
        QT_TR_NOOP(
            "Show what --trace has written, tell how two traces differ, play one (--as), or take it to Wireshark."),
        1, 3, Command::Alone, prepareTrace, "trace show sale.trace",
        "as password force port register config wait protocol expect-serial expect-inn", traceVerbs,
        QT_TR_NOOP(
            "failed; diff: they differ; replay: something was refused or did not come; the output was lost"),
        nullptr, true},
    {"mark", "CODE", QT_TR_NOOP("Check the marking code of one piece to be sold."), 1, 1, Command::AtRegister,
        prepareMark, "mark 0104600000000015215!Ab1cD"},
};

bool hasWord(const char* words, const char* word)
{
    return QString::fromLatin1(words).split(QLatin1Char(' ')).contains(QLatin1String(word));
}

QString namesOf(const OptionRow& option)
{
    QStringList names;
    for (const Command& command : commandTable) {
        if (command.takes(option))
            names.append(QLatin1String(command.name));
    }
    return names.join(tr(" and "));
}

/// An option that a command does not know would be taken for one that it heeds.
void refuseMisplaced(const Command& command, const Options& options)
{
    for (const Setting& setting : options.settings) {
        const OptionRow& option = *setting.option;
        // A service knows every document by its id.
        if (options.service && command.makesDocument() && qstrcmp(option.name, "id") == 0)
            continue;
        if (option.group == OptionRow::Own && setting.origin.isEmpty() && !command.takes(option))
            throw UsageError(tr("--%1 goes with %2").arg(QLatin1String(option.name), namesOf(option)));
    }
}

} // namespace

std::span<const Command> commands()
{
    return commandTable;
}

void requireHex(const Options& options, const QString& what)
{
    if (!options.isHex())
        throw Refusal(sale::ErrorKind::Data, tr("%1 cannot be done over XML").arg(what));
}

bool Command::takesReceipt() const
{
    return note == receiptNote;
}

QStringList Command::actions() const
{
    return QString::fromLatin1(arguments).section(QLatin1Char(' '), 0, 0).split(QLatin1Char('|'));
}

bool Command::takes(const OptionRow& option) const
{
    switch (option.group) {
    case OptionRow::Common:
        return true;
    case OptionRow::Line:
        return kind != Alone || hasWord(options, option.name);
    case OptionRow::Document:
        return kind == Document || hasWord(options, option.name);
    default:
        return hasWord(options, option.name);
    }
}

const Command* findCommand(const QString& name)
{
    const auto* const command = std::find_if(std::begin(commandTable), std::end(commandTable),
        [&name](const Command& row) { return name == QLatin1String(row.name); });
    return command == std::end(commandTable) ? nullptr : command;
}

const Command& requireCommand(const QString& name)
{
    if (const Command* const command = findCommand(name))
        return *command;
    QStringList known;
    for (const Command& command : commandTable)
        known.append(QLatin1String(command.name));
    throw UsageError(tr("no command \"%1\"%2").arg(name, suggestion(name, known)));
}

void requireAction(const QString& command, const QString& action)
{
    const QStringList known = requireCommand(command).actions();
    if (!known.contains(action))
        throw UsageError(
            tr("no command \"%1\"%2").arg(command + QLatin1Char(' ') + action, suggestion(action, known)));
}

bool makesDocument(const QString& name)
{
    const Command* const command = findCommand(name);
    return command != nullptr && command->makesDocument();
}

const Command& findCommand(const Options& options)
{
    if (options.command.isEmpty())
        throw UsageError(tr("no command"));
    const Command& command = requireCommand(options.command);
    refuseMisplaced(command, options);
    if (!options.configFile.isEmpty() && options.registerSection.isEmpty()
        && command.prepare != prepareConfig)
        throw UsageError(tr("--config needs the name of a register in it: --register"));
    if (options.arguments.size() < command.leastArguments || options.arguments.size() > command.mostArguments)
        throw UsageError(
            tr("%1 takes %2")
                .arg(options.command,
                    command.mostArguments == 0 ? tr("no arguments") : QLatin1String(command.arguments)));
    return command;
}

} // namespace frctl
