#pragma once

#include <QLoggingCategory>

namespace frserver {

Q_DECLARE_LOGGING_CATEGORY(peerLog)

} // namespace frserver
