#include "api/api.h"
#include "api/apiroute.h"
#include "api/place.h"
#include "api/poolview.h"
#include "api/rights.h"

#include <QJsonArray>

namespace frserver {

namespace {

using http::Answer;
using http::Request;
using http::Response;

Answer listPools(Api& api, const Request& request)
{
    QJsonArray pools;
    for (const auto& [name, pool] : api.places().pools()) {
        if (rights::mayUse(request, Place::ofPool(name)))
            pools.append(poolView(api, *pool));
    }
    return Response::json(QJsonObject{{QStringLiteral("pools"), pools}});
}

Answer showPool(Api& api, const Request& request)
{
    return Response::json(poolView(api, poolOf(api, request)));
}

} // namespace

const QList<ApiRoute>& poolRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/pools"), listPools},
        {"GET", QStringLiteral("/pools/{name}"), showPool},
    };
    return routes;
}

} // namespace frserver
