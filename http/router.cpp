#include "http/router.h"

#include "http/problem.h"

#include <optional>

namespace http {

namespace {

bool isParameter(const QString& part)
{
    return part.startsWith(QLatin1Char('{')) && part.endsWith(QLatin1Char('}'));
}

QStringList partsOf(const QString& pattern)
{
    return pattern == QLatin1String("/") ? QStringList() : pattern.mid(1).split(QLatin1Char('/'));
}

/// How many parts are as they are written; nothing when the path is another.
std::optional<int> likeness(const QString& pattern, const QStringList& segments)
{
    const QStringList parts = partsOf(pattern);
    if (parts.size() != segments.size())
        return std::nullopt;
    int same = 0;
    for (qsizetype index = 0; index < parts.size(); ++index) {
        if (parts.at(index) == segments.at(index))
            ++same;
        else if (!isParameter(parts.at(index)) || segments.at(index).isEmpty())
            return std::nullopt;
    }
    return same;
}

QMap<QString, QString> parametersOf(const QString& pattern, const QStringList& segments)
{
    QMap<QString, QString> parameters;
    const QStringList parts = partsOf(pattern);
    for (qsizetype index = 0; index < parts.size(); ++index) {
        if (isParameter(parts.at(index)))
            parameters.insert(parts.at(index).sliced(1).chopped(1), segments.at(index));
    }
    return parameters;
}

} // namespace

void Router::add(
    const QByteArray& method, const QString& pattern, const Handler& handler, const Access& access)
{
    m_routes.push_back({method, pattern, handler, access});
}

const Route& Router::find(Request& request) const
{
    const QByteArray method = request.method == "HEAD" ? QByteArray("GET") : request.method;
    const Route* found = nullptr;
    int most = -1;
    for (const Route& route : m_routes) {
        const int same = likeness(route.pattern, request.segments).value_or(-1);
        if (route.method == method && same > most) {
            found = &route;
            most = same;
        }
    }
    if (found) {
        request.parameters = parametersOf(found->pattern, request.segments);
        return *found;
    }
    if (const QByteArray methods = allowed(request); !methods.isEmpty())
        throw Problem(405).withHeader("Allow", methods);
    throw Problem(404);
}

QByteArray Router::allowed(const Request& request) const
{
    QByteArrayList methods;
    for (const Route& route : m_routes) {
        if (!methods.contains(route.method) && likeness(route.pattern, request.segments))
            methods.append(route.method);
    }
    if (methods.contains("GET"))
        methods.append("HEAD");
    if (!methods.isEmpty())
        methods.append("OPTIONS");
    return methods.join(", ");
}

} // namespace http
