#pragma once

#include <QString>

#include <optional>

namespace emulator::drivenumber {

/// 9999, which no true drive begins with, and 12 more digits.
bool isGood(const QString& number);
/// One that no other drive has, so that no host takes one life for another.
QString fresh();
/// The digits at its end so many further, of a factory number, too; no value where there are none, or too few
/// of them.
std::optional<QString> countedOn(const QString& number, int by);

} // namespace emulator::drivenumber
