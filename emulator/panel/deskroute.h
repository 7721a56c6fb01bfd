#pragma once

#include "http/answer.h"
#include "http/request.h"

#include <QList>
#include <QStringList>

namespace emulator::panel {

class Desk;

/// What is there for each register, below /v1 and /v1/registers/{register}.
struct DeskRoute
{
    QByteArray method;
    const char* pattern;
    http::Answer (*handler)(Desk& desk, const http::Request& request);
    /// Names that its query may have.
    QStringList query = {};
    /// Of a PUT or a POST; others have none.
    bool hasBody = true;

    bool takesBody() const { return hasBody && (method == "PUT" || method == "POST"); }
};

/// @name All of them, by topic. Handlers throw http::Problem.
/// @{
const QList<DeskRoute>& lookRoutes();
const QList<DeskRoute>& switchRoutes();
const QList<DeskRoute>& faultRoutes();
const QList<DeskRoute>& snapshotRoutes();
const QList<DeskRoute>& eventRoutes();
/// @}

} // namespace emulator::panel
