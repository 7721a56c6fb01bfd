#pragma once

#include "errors.h"
#include "fruser.h"
#include "options.h"

#include <QJsonObject>
#include <QStringList>

#include <functional>
#include <optional>
#include <span>

class AbstractFrDriver;

namespace frctl {

/// What a command has to say: the same for people and for machines.
struct Output
{
    QStringList lines;
    QJsonObject json;
    /// ExitIssued for a receipt that an earlier run began and this one found issued.
    ExitStatus status = ExitSuccess;
};

/// A command with its arguments checked and its files read. Until one of the two functions runs, nothing has
/// been sent to a register.
struct Task
{
    /// For commands that need no register.
    std::function<Output()> alone;
    /// For the others.
    std::function<Output(AbstractFrDriver&)> onRegister;
    /// False for commands that look at a document which init would clean up.
    bool withInit = true;
    /// The cashier of the document, when it is not simply that of the command line.
    std::optional<FrUser> cashier;
};

/// The task of a command that needs a register and nothing else.
Task onRegister(const std::function<Output(AbstractFrDriver&)>& run);
/// Throws Refusal for what only the HEX protocol can do.
void requireHex(const Options& options, const QString& what);

/// One line of the command table.
struct Command
{
    const char* name;
    /// As help shows them.
    const char* arguments;
    const char* help;
    qsizetype leastArguments;
    qsizetype mostArguments;
    /// Throws UsageError and ReceiptError.
    Task (*prepare)(const Options& options);
};

/// All commands, in the order of the help.
std::span<const Command> commands();
/// The command of the options with its number of arguments checked. Throws UsageError.
const Command& findCommand(const Options& options);

} // namespace frctl
