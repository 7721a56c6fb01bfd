#pragma once

#include "registerprobe.h"

#include <optional>

namespace frctl {

/// What a register behind a TCP port makes of a connection while it has another one.
enum class SecondConnection {
    /// Nobody hears the former one any more.
    EndsTheFormer,
    IsNotServed,
    IsServedToo
};

/// Tries it with the register that the probe has found: two connections at once, over which it is asked who
/// it is. Nothing when it does not answer any more. It lasts for some seconds at most. Throws Interrupted.
std::optional<SecondConnection> trySecondConnection(
    const Options& options, const Probe& probe, LineTrace* trace);
/// In words.
QString secondConnectionText(std::optional<SecondConnection> result);

} // namespace frctl
