#pragma once

#include "task.h"

#include <QtGlobal>

#include <span>

namespace frctl {

struct Options;

/// One of several things that a command does, named by its first argument.
struct Verb
{
    const char* name;
    /// Behind the name.
    qsizetype leastArguments;
    qsizetype mostArguments;
    /// Throws UsageError.
    Task (*prepare)(const Options& options);
    /// Names of the command's own options that it takes.
    const char* options = "";
};

/// The task of the verb that the options name, with its options and its number of arguments checked. Throws
/// UsageError.
Task prepareVerb(std::span<const Verb> verbs, const Options& options);

} // namespace frctl
