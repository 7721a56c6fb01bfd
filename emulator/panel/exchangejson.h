#pragma once

#include <QJsonObject>

namespace emulator::panel {

struct LoggedExchange;

namespace exchangejson {

/// With its frames decoded.
QJsonObject whole(const LoggedExchange& exchange);

} // namespace exchangejson

} // namespace emulator::panel
