#include "api/apiroute.h"

#include "api/journalproblem.h"
#include "findingsjson.h"
#include "http/problem.h"
#include "journalerror.h"

#include <QJsonArray>

namespace frserver {

namespace {

/// Told as what is wrong with a document is: clients look for it there.
void requireQueryNames(const ApiRoute& route, const http::Request& request)
{
    QList<receipt::Finding> errors;
    QStringList seen;
    for (const auto& [name, value] : request.query) {
        const bool isKnown = name.isEmpty() || route.queryNames.contains(name);
        if (!isKnown || seen.contains(name))
            errors.append({receipt::Finding::Error, name, value,
                isKnown ? QStringLiteral("is asked for twice") : QStringLiteral("is not known")});
        if (!name.isEmpty())
            seen.append(name);
    }
    if (errors.isEmpty())
        return;
    const QString known = route.queryNames.isEmpty()
        ? QStringLiteral("nothing is asked for here")
        : QStringLiteral("there are ") + route.queryNames.join(QStringLiteral(", "));
    const receipt::Finding& first = errors.constFirst();
    throw http::Problem(400, QStringLiteral("%1 %2; %3.").arg(first.path, first.reason, known))
        .with(QStringLiteral("errors"), sale::findingsJson(errors))
        .with(QStringLiteral("warnings"), QJsonArray());
}

} // namespace

http::Handler handlerOf(Api& api, const ApiRoute& route)
{
    return [&api, route](const http::Request& request) -> http::Answer {
        requireQueryNames(route, request);
        try {
            return route.answer(api, request);
        } catch (const sale::JournalError& error) {
            return journalProblem(error);
        }
    };
}

} // namespace frserver
