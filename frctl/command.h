#pragma once

#include "options.h"
#include "subcommand.h"
#include "task.h"

#include <span>

namespace frctl {

struct OptionRow;

/// Throws Refusal for what only the HEX protocol can do.
void requireHex(const Options& options, const QString& what);

/// One line of the command table.
struct Command
{
    enum Kind {
        /// Needs no register.
        Alone,
        /// Works a register.
        AtRegister,
        /// Makes a document: its answer is sale::DocumentAnswer then.
        Document
    };

    bool makesDocument() const { return kind == Document; }
    bool takesReceipt() const;
    /// The words of which its first argument is one, as help shows them.
    QStringList actions() const;
    /// Whether Ctrl-C ends it with a status of its own.
    bool isInterruptible() const { return kind != Alone || asksPorts; }
    /// Whether it takes the option, see OptionRow::group.
    bool takes(const OptionRow& option) const;

    const char* name;
    /// As help shows them. Words with | between them are offered by the shells' completion.
    const char* arguments;
    const char* help;
    qsizetype leastArguments;
    qsizetype mostArguments;
    Kind kind;
    /// Throws UsageError and ReceiptError.
    Task (*prepare)(const Options& options);
    /// What stands in its help behind "frctl" and the options that name a register.
    const char* example;
    /// Names of the options of OptionRow::Own, or of a register, that it takes besides those of its kind.
    const char* options = "";
    /// Of a command whose first argument is one of several, a line each in its help.
    std::span<const Subcommand> subcommands = {};
    /// What exit status 1 means, where that is not what the others of its kind mean by it.
    const char* failure = nullptr;
    /// What else its help says; in that of a command that takes a receipt one stands behind it.
    const char* note = nullptr;
    /// One that is Alone, and yet has to do with a line.
    bool asksPorts = false;
};

/// All commands, in the order of the help.
std::span<const Command> commands();
/// Whether the command of that name makes a document; false for a name that is none.
bool makesDocument(const QString& name);
/// Null for a name that is none.
const Command* findCommand(const QString& name);
/// The same, with what it may be a misspelling of. Throws UsageError.
const Command& requireCommand(const QString& name);
/// Throws UsageError, with what it may be a misspelling of, for an action that the command does not have.
void requireAction(const QString& command, const QString& action);
/// The command of the options with its options and its number of arguments checked. Throws UsageError.
const Command& findCommand(const Options& options);

} // namespace frctl
