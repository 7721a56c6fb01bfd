#include "api/api.h"
#include "api/apiroute.h"
#include "api/audit.h"
#include "api/rights.h"
#include "http/problem.h"

#include <QJsonArray>

namespace frserver {

namespace {

using http::Answer;
using http::Request;
using http::Response;

/// Without what a token that sells may not see of others.
QJsonObject viewFor(const Api& api, const Request& request, const Till& till)
{
    QJsonObject view = api.registerView(till);
    // Whoever may use the register sees what is made at it, whichever pool that came from.
    const auto hide = [&](const QString& member, const QString& id) {
        if (!id.isEmpty() && !rights::maySee(api, request, id, till.settings().name, {}))
            view.insert(member, QJsonValue());
    };
    const QString receipt = QStringLiteral("lastReceipt");
    const QString document = QStringLiteral("document");
    hide(receipt, view.value(receipt).toObject().value(QStringLiteral("id")).toString());
    hide(document, view.value(document).toString());
    return view;
}

Answer listRegisters(Api& api, const Request& request)
{
    QJsonArray registers;
    for (const auto& [name, till] : api.tills()) {
        if (rights::mayUse(request, name))
            registers.append(viewFor(api, request, *till));
    }
    QJsonArray missing;
    for (const QString& name : api.missingRegisters()) {
        if (rights::mayUse(request, name))
            missing.append(
                QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("queue"), api.queueView(name)}});
    }
    return Response::json(
        QJsonObject{{QStringLiteral("registers"), registers}, {QStringLiteral("notConfigured"), missing}});
}

Answer showRegister(Api& api, const Request& request)
{
    return Response::json(viewFor(api, request, tillOf(api, request)));
}

/// An empty body is one without members.
QJsonObject bodyOf(const Request& request)
{
    return request.body.trimmed().isEmpty() ? QJsonObject() : request.json();
}

/// Who it is said to be, beside whose token it is.
QString byOf(const Request& request, const QJsonObject& body)
{
    const QString by = body.value(QStringLiteral("by")).toString().trimmed();
    return by.isEmpty() ? rights::callerName(request) : by;
}

/// An order that nobody takes is refused: it would be followed at a time when nobody expects it.
Till& reachableTill(const Api& api, const Request& request)
{
    Till& till = tillOf(api, request);
    if (till.isReachable())
        return till;
    const QString text = till.view().value(QStringLiteral("waitingText")).toString();
    throw http::Problem(503, QStringLiteral("unreachable"),
        QStringLiteral("The service that works the register does not answer"),
        text + QStringLiteral(". Nothing was changed."))
        .withHeader("Retry-After", "10");
}

Answer pause(Api& api, const Request& request)
{
    Till& till = reachableTill(api, request);
    const qint64 order = till.pause(byOf(request, bodyOf(request)));
    audit(request, QStringLiteral("paused ") + till.settings().name);
    return api.whenPaused(till, order, request.preferredWait());
}

Answer resume(Api& api, const Request& request)
{
    Till& till = reachableTill(api, request);
    const qint64 order = till.resume(byOf(request, bodyOf(request)));
    audit(request, QStringLiteral("resumed ") + till.settings().name);
    return Response::json(api.registerView(till), order == 0 ? 200 : 202);
}

Answer acceptRegister(Api& api, const Request& request)
{
    Till& till = reachableTill(api, request);
    const QJsonObject body = bodyOf(request);
    const QString note = body.value(QStringLiteral("note")).toString().trimmed();
    if (note.isEmpty())
        throw http::Problem(400, QStringLiteral("note says what was looked at, and why all is well."));
    till.accept(byOf(request, body), note);
    audit(request, QStringLiteral("accepted %1 as it is: %2").arg(till.settings().name, note));
    return Response::json(api.registerView(till), 202);
}

} // namespace

const QList<ApiRoute>& registerRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/registers"), listRegisters},
        {"GET", QStringLiteral("/registers/{name}"), showRegister},
        {"POST", QStringLiteral("/registers/{name}/pause"), pause, rights::administering()},
        {"POST", QStringLiteral("/registers/{name}/resume"), resume, rights::administering()},
        {"POST", QStringLiteral("/registers/{name}/accept"), acceptRegister, rights::administering()},
    };
    return routes;
}

} // namespace frserver
