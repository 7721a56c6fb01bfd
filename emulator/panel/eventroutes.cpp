#include "http/problem.h"
#include "panel/desk.h"
#include "panel/deskroute.h"

namespace emulator::panel {

namespace {

using http::Answer;
using http::Event;
using http::Request;

const QStringList& eventNames()
{
    static const QStringList names{QStringLiteral("document"), QStringLiteral("tape"),
        QStringLiteral("exchange"), QStringLiteral("refusal"), QStringLiteral("warning"),
        QStringLiteral("fault"), QStringLiteral("state")};
    return names;
}

bool isOf(const Event& event, int number)
{
    return event.data.value(QStringLiteral("register")).toInt() == number;
}

bool hasValue(const Event& event, const QStringList& members, const QString& wanted)
{
    for (const QString& member : members) {
        if (event.data.value(member).toString() == wanted)
            return true;
    }
    return wanted.isEmpty();
}

Answer wait(Desk& desk, const Request& request)
{
    constexpr int longest = 600;
    constexpr int usual = 10;
    const auto text = [&request](const char* name) {
        return request.queryValue(QLatin1String(name)).value_or(QString());
    };
    const QString wanted = text("event");
    if (!eventNames().contains(wanted))
        throw http::Problem(
            400, QStringLiteral("event is one of: ") + eventNames().join(QStringLiteral(", ")));
    const int seconds = request.queryNumber(QStringLiteral("timeout"), 0, longest).value_or(usual);
    const auto filter = [number = desk.number(), wanted, type = text("type"), command = text("command")](
                            const Event& event) {
        return isOf(event, number) && wanted == QLatin1String(event.type)
            && hasValue(event, {QStringLiteral("type")}, type)
            && hasValue(event, {QStringLiteral("command"), QStringLiteral("name")}, command);
    };
    return desk.events().wait(filter, std::chrono::seconds(seconds), text("after").toLatin1());
}

Answer events(Desk& desk, const Request& request)
{
    if (request.queryValue(QStringLiteral("all")) == QStringLiteral("true"))
        return desk.events().subscribe(request);
    return desk.events().subscribe(
        request, [number = desk.number()](const Event& event) { return isOf(event, number); });
}

} // namespace

const QList<DeskRoute>& eventRoutes()
{
    static const QList<DeskRoute> routes{
        {"GET", "/wait", wait},
        {"GET", "/events", events},
    };
    return routes;
}

} // namespace emulator::panel
