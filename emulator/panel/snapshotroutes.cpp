#include "http/problem.h"
#include "memory/foreignstate.h"
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
    } catch (const ForeignState& error) {
        throw http::Problem(409, error.text());
    } catch (const MemoryError& error) {
        throw http::Problem(500, error.text());
    }
}

Answer snapshots(Desk& desk, const Request&)
{
    return Response::json(
        QJsonObject{{QStringLiteral("snapshots"), QJsonArray::fromStringList(desk.snapshotNames())}});
}

Answer keep(Desk& desk, const Request& request)
{
    constexpr qsizetype mostSnapshots = 100;
    const QString name = nameOf(request);
    if (!StateFolder::isSnapshotName(name))
        throw http::Problem(400,
            QStringLiteral(
                "The name is 1 to 64 letters, digits, points, hyphens and underscores, of which no "
                "point or hyphen is the first."));
    const QStringList names = desk.snapshotNames();
    if (names.size() >= mostSnapshots && !names.contains(name))
        throw http::Problem(409,
            QStringLiteral("There are %1 snapshots, which is the most: delete one first.").arg(names.size()));
    carryOut([&] { desk.keepSnapshot(name); });
    return snapshots(desk, request);
}

void checkIsThere(Desk& desk, const QString& name)
{
    if (!desk.snapshotNames().contains(name))
        throw http::Problem(404, QStringLiteral("There is no snapshot of that name."));
}

Answer remove(Desk& desk, const Request& request)
{
    checkIsThere(desk, nameOf(request));
    carryOut([&] { desk.removeSnapshot(nameOf(request)); });
    return Response::empty();
}

Answer restore(Desk& desk, const Request& request)
{
    checkIsThere(desk, nameOf(request));
    carryOut([&] { desk.restoreSnapshot(nameOf(request)); });
    return Response::json(stateview::whole(desk));
}

Answer reset(Desk& desk, const Request&)
{
    carryOut([&] { desk.reset(); });
    return Response::json(stateview::whole(desk));
}

} // namespace

const QList<DeskRoute>& snapshotRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/snapshots", snapshots},
        {"PUT", "/snapshots/{name}", keep, {}, false},
        {"DELETE", "/snapshots/{name}", remove},
        {"POST", "/snapshots/{name}/restore", restore, {}, false},
        {"POST", "/reset", reset, {}, false},
    };
    return routes;
}

} // namespace emulator::panel
