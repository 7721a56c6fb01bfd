#include "api/api.h"
#include "api/apiroute.h"
#include "api/place.h"
#include "api/rights.h"

#include <QJsonArray>

namespace frserver {

namespace {

/// What the caller's token may do, so that a page need not offer the rest.
http::Answer showCaller(Api& api, const http::Request& request)
{
    QJsonArray registers;
    for (const auto& [name, till] : api.tills()) {
        if (rights::mayUse(request, name))
            registers.append(name);
    }
    QJsonArray pools;
    for (const auto& [name, pool] : api.places().pools()) {
        if (rights::mayUse(request, Place::ofPool(name)))
            pools.append(name);
    }
    const QString name = request.caller ? request.caller->name : QString();
    return http::Response::json(QJsonObject{{QStringLiteral("name"), name.isEmpty() ? QJsonValue() : name},
        {QStringLiteral("role"), rights::roleOf(request)}, {QStringLiteral("registers"), registers},
        {QStringLiteral("pools"), pools}});
}

} // namespace

const QList<ApiRoute>& callerRoutes()
{
    static const QList<ApiRoute> routes{{"GET", QStringLiteral("/me"), showCaller}};
    return routes;
}

} // namespace frserver
