#pragma once

namespace emulator {

class Database;

/// The versions of the format of a state.
namespace migrations {

int newestVersion();
/// Makes this version out of the one before it, the first one out of nothing.
void makeVersion(int version, const Database& database);

} // namespace migrations

} // namespace emulator
