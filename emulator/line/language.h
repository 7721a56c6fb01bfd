#pragma once

namespace emulator {

/// The two languages that a register speaks on its line.
enum class Language { Hex, Xml };

} // namespace emulator
