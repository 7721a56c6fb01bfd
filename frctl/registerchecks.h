#pragma once

#include "healthcheck.h"

#include <QList>

class AbstractFrDriver;

namespace frctl {

struct Options;

/// Asks the register of the options what it is and how it fares: who it is, clock, fiscal drive, shift. It is
/// not initialised, so that an open document stays open. One that does not answer is asked over the other
/// protocol too. Without a port, or an answer, the checks are untold, and so they are
/// of a port that another program has open: it is not asked. Throws Interrupted.
QList<HealthCheck> registerChecks(const Options& options);

} // namespace frctl
