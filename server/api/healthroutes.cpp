#include "api/api.h"
#include "api/apiroute.h"
#include "api/metrics.h"
#include "api/rights.h"
#include "http/problem.h"

namespace frserver {

namespace {

using http::Answer;
using http::Request;
using http::Response;

Answer health(Api&, const Request&)
{
    return Response::json(QJsonObject{{QStringLiteral("status"), QStringLiteral("ok")}});
}

/// Whether documents are accepted now; that a register cannot make them is told by itself.
Answer readiness(Api& api, const Request&)
{
    if (api.isStopping())
        throw http::Problem(503, QStringLiteral("stopping"), QStringLiteral("The service is stopping"),
            QStringLiteral("Documents are not accepted."))
            .withHeader("Retry-After", "10");
    if (api.store().isMoved())
        throw http::Problem(503, QStringLiteral("moved"), QStringLiteral("The journal has moved"),
            QStringLiteral("Another machine goes on with it. Documents are not accepted."));
    // What the journal fails of is told in its place.
    api.requireJournal();
    QJsonObject states;
    for (const auto& [name, till] : api.tills())
        states.insert(name, till->view().value(QStringLiteral("state")));
    for (const QString& name : api.missingRegisters())
        states.insert(name, QStringLiteral("notConfigured"));
    return Response::json(QJsonObject{
        {QStringLiteral("status"), QStringLiteral("ready")}, {QStringLiteral("registers"), states}});
}

Answer metrics(Api& api, const Request&)
{
    return Response::bytes(metricsText(api), "text/plain; version=0.0.4; charset=utf-8");
}

} // namespace

const QList<ApiRoute>& healthRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/healthz"), health, rights::anybody()},
        {"GET", QStringLiteral("/readyz"), readiness, rights::anybody()},
        {"GET", QStringLiteral("/metrics"), metrics},
    };
    return routes;
}

} // namespace frserver
