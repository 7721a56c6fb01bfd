#pragma once

#include <QStringList>

namespace emulator {

/// The versions of the format of a state.
namespace migrations {

int newestVersion();
/// What makes the tables of the newest version.
QStringList tables();
/// What makes this version out of the one before it.
QStringList stepTo(int version);

} // namespace migrations

} // namespace emulator
