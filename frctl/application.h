#pragma once

#include <QStringList>

namespace frctl {

/// The whole program behind main: gives the exit status.
int runApplication(const QStringList& commandLine);

} // namespace frctl
