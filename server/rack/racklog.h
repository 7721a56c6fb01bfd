#pragma once

#include <QLoggingCategory>

namespace frserver {

/// "frserver.rack": what became of registers and workers, without what documents say.
Q_DECLARE_LOGGING_CATEGORY(rackLog)

} // namespace frserver
