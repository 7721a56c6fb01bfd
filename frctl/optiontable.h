#pragma once

#include <QStringList>

#include <span>

namespace frctl {

struct Options;

/// One line of the table of options.
struct OptionRow
{
    /// Who takes it, and in whose help it stands.
    enum Group {
        /// Every command.
        Common,
        /// Those that work a register; others are not disturbed by it, unless they would owe a trace.
        Line,
        /// Those that make a document; others are not disturbed by it.
        Document,
        /// Those that name it in the table of commands; for others it is an error.
        Own
    };

    const char* name;
    /// Null for a switch.
    const char* value;
    const char* help;
    Group group;
    /// Puts the value, which is empty for a switch, into the options. Throws UsageError with the reason
    /// alone: its caller tells where the value stands.
    void (*read)(const QString& value, Options& options);
    /// Its name in a section of the configuration; null for what cannot stand there.
    const char* key = nullptr;
    /// For the short form; 0 without one.
    char letter = 0;
    /// Each is one more; of others only the same may be said again.
    bool isRepeatable = false;

    bool isSwitch() const { return value == nullptr; }
};

/// All options, in the order of the help.
std::span<const OptionRow> optionRows();
/// Null for a name that is none.
const OptionRow* findOption(const QString& name);
const OptionRow* findKey(const QString& key);
const OptionRow* findLetter(QChar letter);
QStringList optionNames();

} // namespace frctl
