#pragma once

#include "options.h"
#include "task.h"

#include <span>

namespace frctl {

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
    /// Its answer is that of a document then, see sale::DocumentAnswer.
    bool makesDocument = false;
};

/// All commands, in the order of the help.
std::span<const Command> commands();
/// Whether the command of that name makes a document; false for a name that is none.
bool makesDocument(const QString& name);
/// The command of the options with its number of arguments checked. Throws UsageError.
const Command& findCommand(const Options& options);

} // namespace frctl
