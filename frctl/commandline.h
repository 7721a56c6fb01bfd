#pragma once

#include "setting.h"

#include <QStringList>

namespace frctl {

/// A command line taken to pieces.
struct CommandLine
{
    Settings options;
    /// The command and its arguments: what is no option, "-", what looks like a negative number, and
    /// whatever stands behind "--".
    QStringList words;
};

/// Options stand anywhere, as "--name value", "--name=value" or by their letter. The first argument is the
/// program's name. Throws UsageError.
CommandLine readCommandLine(const QStringList& arguments);

} // namespace frctl
