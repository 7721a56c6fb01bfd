#pragma once

/// The bits by which a fiscal drive warns, see FnStatusInfo::warningFlags.
namespace frctl::drivewarnings {

constexpr int changeAtOnce = 1 << 0;
constexpr int resourceEnds = 1 << 1;
constexpr int memoryFull = 1 << 2;
/// The oldest document has waited for too long.
constexpr int ofdIsSilent = 1 << 3;

} // namespace frctl::drivewarnings
