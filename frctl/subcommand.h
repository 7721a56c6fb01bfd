#pragma once

namespace frctl {

/// A line of the help of a command that does several things.
struct Subcommand
{
    /// From the command's own name on: "journal show ID".
    const char* signature;
    const char* help;
};

} // namespace frctl
