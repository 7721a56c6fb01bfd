#pragma once

#include <QByteArray>

namespace frserver {

class Api;

/// Everything that is counted and measured, as Prometheus reads it.
QByteArray metricsText(const Api& api);

} // namespace frserver
