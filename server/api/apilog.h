#pragma once

#include <QLoggingCategory>

namespace frserver {

/// "frserver.api": what keeps answers from being given.
Q_DECLARE_LOGGING_CATEGORY(apiLog)

} // namespace frserver
