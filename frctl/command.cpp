#include "command.h"

#include "errors.h"
#include "infocommand.h"
#include "receiptcommands.h"
#include "servicecommands.h"

namespace frctl {

namespace {

constexpr Command Commands[] = {
    {"info", "", "What the plugin says of itself; needs no register.", 0, 0, prepareInfo},
    {"status", "", "The register's identity, clock, shift and state.", 0, 0, prepareStatus},
    {"open-shift", "", "Open the shift if it is closed.", 0, 0, prepareOpenShift},
    {"sell", "FILE", "Issue the receipt of a JSON file.", 1, 1, prepareSell},
    {"refund", "FILE", "Issue the return receipt of a JSON file.", 1, 1, prepareRefund},
    {"cash-in", "SUM", "Put cash into the drawer.", 1, 1, prepareCashIn},
    {"cash-out", "SUM", "Take cash out of the drawer.", 1, 1, prepareCashOut},
    {"print", "FILE", "Print the lines of a text file as a document of no fiscal meaning.", 1, 1,
        preparePrint},
    {"cancel", "", "Cancel the open document.", 0, 0, prepareCancel},
    {"drawer", "open|state", "Open the cash drawer, or tell whether it is open.", 1, 1, prepareDrawer},
    {"time", "get|set [TIME]", "The register's clock; set takes 2024-12-31T23:59:59 or the time now.", 1, 2,
        prepareTime},
    {"mark", "CODE", "Check the marking code of one piece to be sold.", 1, 1, prepareMark},
};

} // namespace

std::span<const Command> commands()
{
    return Commands;
}

const Command& findCommand(const Options& options)
{
    if (options.command.isEmpty())
        throw UsageError(QStringLiteral("no command"));
    for (const Command& command : Commands) {
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
