#pragma once

#include <QString>

namespace emulator {

/// The text with its control characters escaped: those that a host has sent would be commands to a terminal.
QString terminalText(const QString& text);

} // namespace emulator
