#pragma once

#include "inifile.h"

namespace frctl {

/// The sections of a file, see devices::readIni. Throws UsageError, with file and line, for what is wrong in
/// it.
QList<devices::IniSection> readConfigurationFile(const QString& fileName);

} // namespace frctl
