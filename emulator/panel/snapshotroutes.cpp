#include "http/problem.h"
#include "memory/memoryerror.h"
#include "memory/statefolder.h"
#include "panel/desk.h"
#include "panel/deskroute.h"
#include "panel/stateview.h"

#include <QJsonArray>

namespace emulator::panel {

namespace {

using http::Answer;
using http::Request;
using http::Response;

QString nameOf(const Request& request)
{
    return request.parameter(QStringLiteral("name"));
}

/// What the state's folder complains of is for whoever asked.
template <typename Work>
void carryOut(Work work)
{
    try {
        work();
    } catch (const MemoryError& error) {
        throw http::Problem(500, error.text());
    }
}

Answer snapshots(Desk& desk, const Request&)
{
    return Response::json(
        QJsonObject{{QStringLiteral("snapshots"), QJsonArray::fromStringList(desk.snapshots().names())}});
}

Answer keep(Desk& desk, const Request& request)
{
    if (!StateFolder::isSnapshotName(nameOf(request)))
        throw http::Problem(
            400, QStringLiteral("The name is one of letters, digits, points, hyphens and underscores."));
    carryOut([&] { desk.snapshots().keep(nameOf(request)); });
    return snapshots(desk, request);
}

Answer restore(Desk& desk, const Request& request)
{
    if (!desk.snapshots().names().contains(nameOf(request)))
        throw http::Problem(404, QStringLiteral("There is no snapshot of that name."));
    carryOut([&] { desk.snapshots().restore(nameOf(request)); });
    desk.replaced();
    return Response::json(stateview::whole(desk));
}

Answer reset(Desk& desk, const Request&)
{
    carryOut([&] { desk.snapshots().reset(); });
    desk.faults().setRules({});
    desk.faults().setPowerCut(std::nullopt);
    desk.device().setMarkVerdicts({});
    desk.device().setCover(false);
    desk.device().setPowered(true);
    desk.device().setClockSpeed(1);
    desk.replaced();
    return Response::json(stateview::whole(desk));
}

} // namespace

const QList<DeskRoute>& snapshotRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/snapshots", snapshots},
        {"PUT", "/snapshots/{name}", keep},
        {"POST", "/snapshots/{name}/restore", restore},
        {"POST", "/reset", reset},
    };
    return routes;
}

} // namespace emulator::panel
