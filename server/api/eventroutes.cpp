#include "api/api.h"
#include "api/apiroute.h"
#include "api/rights.h"

#include <QFile>

namespace frserver {

namespace {

using http::Answer;
using http::Event;
using http::Request;

/// Of what the caller may see. That a document is somebody's is known before the first event of it.
Answer events(Api& api, const Request& request)
{
    return api.events().subscribe(request, [&api, request](const Event& event) {
        const QString name = event.data.value(QStringLiteral("register")).toString();
        const QString id = event.data.value(QStringLiteral("id")).toString();
        const QString pool = event.data.value(QStringLiteral("pool")).toString();
        return id.isEmpty() ? rights::mayUse(request, name) : rights::maySee(api, request, id, name, pool);
    });
}

Answer describe(Api&, const Request&)
{
    QFile file(QStringLiteral(":/api/frserver.openapi.json"));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    return http::Response::bytes(isOpen ? file.readAll() : QByteArray(), "application/json");
}

} // namespace

const QList<ApiRoute>& eventRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/events"), events, {}, {QStringLiteral("lastEventId")}},
        {"GET", QStringLiteral("/openapi.json"), describe, rights::anybody()},
    };
    return routes;
}

} // namespace frserver
