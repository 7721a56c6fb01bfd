#include "command.h"

#include "countercommands.h"
#include "errors.h"
#include "fncommands.h"
#include "infocommand.h"
#include "journalcommands.h"
#include "namescommand.h"
#include "parametercommand.h"
#include "printoutcommands.h"
#include "receiptcommands.h"
#include "reportcommands.h"
#include "servicecommands.h"
#include "tracecommands.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace frctl {

namespace {

constexpr qsizetype anyNumber = std::numeric_limits<qsizetype>::max();

constexpr Command commandTable[] = {
    {"info", "", "What the plugin says of itself; needs no register.", 0, 0, prepareInfo},
    {"status", "", "The register's identity, clock, shift and state.", 0, 0, prepareStatus},
    {"open-shift", "", "Open the shift if it is closed.", 0, 0, prepareOpenShift, true},
    {"x-report", "", "Print the shift's totals.", 0, 0, prepareXReport, true},
    {"z-report", "", "Close the shift and print its report.", 0, 0, prepareZReport, true},
    {"accounting-report", "", "Print the report on the state of settlements.", 0, 0, prepareAccountingReport,
        true},
    {"counters", "", "The shift's sums by payment kind, cash in and cash out.", 0, 0, prepareCounters},
    {"registers", "begin|end", "The registers for the start or the end of a shift, by position.", 1, 1,
        prepareRegisters},
    {"fn", "", "State of the fiscal drive and of its exchange with the OFD.", 0, 0, prepareFn},
    {"ofd", "", "The exchange with the operator of fiscal data.", 0, 0, prepareOfd},
    {"print-document", "N", "Print the fiscal drive's document of that number.", 1, 1, preparePrintDocument,
        true},
    {"print-last-document", "", "Print the fiscal drive's last document.", 0, 0, preparePrintLastDocument,
        true},
    {"registration", "--tax-systems LIST", "Register anew with the tax systems of the list.", 0, 0,
        prepareRegistration, true},
    {"sell", "FILE", "Issue the receipt of a JSON file.", 1, 1, prepareSell, true},
    {"refund", "FILE", "Issue the return receipt of a JSON file.", 1, 1, prepareRefund, true},
    {"cash-in", "SUM", "Put cash into the drawer.", 1, 1, prepareCashIn, true},
    {"cash-out", "SUM", "Take cash out of the drawer.", 1, 1, prepareCashOut, true},
    {"print", "FILE", "Print the lines of a text file as a document of no fiscal meaning.", 1, 1,
        preparePrint, true},
    {"cancel", "", "Cancel the open document (HEX).", 0, 0, prepareCancel},
    {"drawer", "open|state", "Open the cash drawer, or tell whether it is open.", 1, 1, prepareDrawer},
    {"time", "get|set [TIME]", "The register's clock; set takes 2024-12-31T23:59:59 or the time now.", 1, 2,
        prepareTime},
    {"params", "list|get|set|defaults [NAME[=VALUE]...]",
        "The register's settings; NAME is 6.0 or a caption, over XML section.subsection.parameter.", 1,
        anyNumber, prepareParams},
    {"header", "FILE", "Program the header lines of the receipts, 4 at most.", 1, 1, prepareHeader},
    {"tail", "FILE", "Program the advertising text at the end of the receipts (HEX).", 1, 1, prepareTail},
    {"logo", "FILE|--clear", "Program the header picture, or remove it (HEX).", 0, 1, prepareLogo},
    {"names", "fields", "What fields a receipt may have, and how the protocols carry them.", 1, 1,
        prepareNames},
    {"journal", "list|show|settle|resolve|export|backup|anonymise|check|accept",
        "What this machine's journal knows of its documents; see the manual page.", 1, 3, prepareJournal},
    {"trace", "show|diff|replay FILE...",
        "Show what --trace has written, tell how two traces differ, or play one (--as).", 2, 3, prepareTrace},
    {"mark", "CODE", "Check the marking code of one piece to be sold.", 1, 1, prepareMark},
};

} // namespace

std::span<const Command> commands()
{
    return commandTable;
}

Task onRegister(const std::function<Output(AbstractFrDriver&)>& run)
{
    Task task;
    task.onRegister = run;
    return task;
}

Task onDesk(const std::function<Output(sale::CashDesk&)>& run)
{
    Task task;
    task.onDesk = run;
    return task;
}

void requireHex(const Options& options, const QString& what)
{
    if (!options.isHex())
        throw Refusal(sale::ErrorKind::Data, QStringLiteral("%1 cannot be done over XML").arg(what));
}

bool makesDocument(const QString& name)
{
    return std::any_of(std::begin(commandTable), std::end(commandTable), [&name](const Command& command) {
        return command.makesDocument && name == QLatin1String(command.name);
    });
}

const Command& findCommand(const Options& options)
{
    if (options.command.isEmpty())
        throw UsageError(QStringLiteral("no command"));
    for (const Command& command : commandTable) {
        if (options.command != QLatin1String(command.name))
            continue;
        if (options.arguments.size() < command.leastArguments
            || options.arguments.size() > command.mostArguments)
            throw UsageError(QStringLiteral("%1 takes %2")
                                 .arg(options.command,
                                     command.mostArguments == 0 ? QStringLiteral("no arguments")
                                                                : QLatin1String(command.arguments)));
        return command;
    }
    throw UsageError(QStringLiteral("no command \"%1\"").arg(options.command));
}

} // namespace frctl
