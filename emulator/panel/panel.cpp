#include "panel/panel.h"

#include "http/problem.h"
#include "panel/deskroute.h"
#include "panel/members.h"
#include "panel/queryvalues.h"
#include "panel/stateview.h"

#include <QFile>
#include <QJsonArray>

namespace emulator::panel {

namespace {

constexpr qsizetype keptEvents = 4000;

QByteArray description()
{
    QFile file(QStringLiteral(":/panel-api/emulator.openapi.json"));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    return isOpen ? file.readAll() : QByteArray();
}

/// An empty object says nothing, as clients send it that always send one.
void checkNoBody(const http::Request& request)
{
    if (!request.body.isEmpty())
        Members(request.json()).finish();
}

} // namespace

Panel::Panel()
    : m_events(keptEvents)
{
    m_site.files = http::StaticFiles(QStringLiteral(":/panel"));
    addRoutes();
}

Desk& Panel::add(Register& device, HostWatch& watch, FaultDesk& faults)
{
    const int number = static_cast<int>(m_desks.size()) + 1;
    m_desks.push_back(std::make_unique<Desk>(number, device, watch, faults, m_events));
    return *m_desks.back();
}

Desk& Panel::deskOf(const http::Request& request) const
{
    const QString number = request.parameters.value(QStringLiteral("register"), QStringLiteral("1"));
    for (const auto& desk : m_desks) {
        if (number == QString::number(desk->number()))
            return *desk;
    }
    throw http::Problem(404, QStringLiteral("There is no register %1.").arg(number));
}

void Panel::addRoutes()
{
    m_site.router.add("GET", QStringLiteral("/v1/openapi.json"), [](const http::Request& request) {
        queryvalues::checkNames(request, {});
        return http::Response::bytes(description(), "application/json");
    });
    m_site.router.add("GET", QStringLiteral("/v1/registers"), [this](const http::Request& request) {
        queryvalues::checkNames(request, {});
        QJsonArray list;
        for (const auto& desk : m_desks)
            list.append(stateview::brief(*desk));
        return http::Response::json(QJsonObject{{QStringLiteral("registers"), list}});
    });
    for (const auto* const routes :
        {&lookRoutes(), &switchRoutes(), &faultRoutes(), &snapshotRoutes(), &eventRoutes()}) {
        for (const DeskRoute& route : *routes) {
            const auto handler = [this, route](const http::Request& request) {
                Desk& desk = deskOf(request);
                queryvalues::checkNames(request, route.query);
                if (!route.takesBody())
                    checkNoBody(request);
                if (route.method != "GET")
                    desk.checkWorks();
                return route.handler(desk, request);
            };
            for (const char* const place : {"/v1", "/v1/registers/{register}"})
                m_site.router.add(route.method, QLatin1String(place) + QLatin1String(route.pattern), handler);
        }
    }
}

} // namespace emulator::panel
