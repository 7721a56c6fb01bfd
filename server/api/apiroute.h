#pragma once

#include "http/access.h"
#include "http/answer.h"
#include "http/request.h"
#include "http/router.h"

#include <QList>

namespace frserver {

class Api;

/// A route of the interface.
struct ApiRoute
{
    QByteArray method;
    QString pattern;
    http::Answer (*answer)(Api& api, const http::Request& request);
    http::Access access = {};
    /// What may stand in its query: anything else would be answered as if it had not been asked.
    QStringList queryNames = {};
};

/// Refuses a query with other names, and says so when the journal cannot be used.
http::Handler handlerOf(Api& api, const ApiRoute& route);

/// @name Those of each topic
/// @{
const QList<ApiRoute>& documentRoutes();
const QList<ApiRoute>& documentListRoutes();
const QList<ApiRoute>& poolRoutes();
const QList<ApiRoute>& registerRoutes();
const QList<ApiRoute>& callerRoutes();
const QList<ApiRoute>& checkRoutes();
const QList<ApiRoute>& pictureRoutes();
const QList<ApiRoute>& eventRoutes();
/// Outside /v1.
const QList<ApiRoute>& healthRoutes();
/// @}

} // namespace frserver
