#include "api/rights.h"

#include "api/api.h"
#include "api/documentresponse.h"
#include "api/place.h"
#include "http/problem.h"
#include "salereturn.h"

namespace frserver {

namespace rights {

namespace {

const QString sellRole = QStringLiteral("sell");
const QString adminRole = QStringLiteral("admin");

} // namespace

http::Access selling()
{
    return {false, {sellRole, adminRole}};
}

http::Access administering()
{
    return {false, {adminRole}};
}

http::Access anybody()
{
    return {true, {}};
}

bool mayUse(const http::Request& request, const QString& place)
{
    return !request.caller || request.caller->scopes.isEmpty() || request.caller->scopes.contains(place);
}

bool isBoundToOwn(const http::Request& request)
{
    return request.caller && request.caller->role == sellRole;
}

bool maySee(const Api& api, const http::Request& request, const sale::StoredDocument& document)
{
    const sale::DocumentRequest& posted = document.request;
    return maySee(api, request, posted.id, posted.registerName, posted.pool);
}

bool maySee(const Api& api, const http::Request& request, const QString& id, const QString& registerName,
    const QString& pool)
{
    // Its own also where somebody has moved it: nobody else would tell it what has become of it.
    if (isBoundToOwn(request))
        return api.owners().ownerOf(id) == request.caller->name;
    return mayUse(request, registerName) || (!pool.isEmpty() && mayUse(request, Place::ofPool(pool)));
}

std::function<QByteArray(const sale::DocumentRequest&)> completion(
    const Api& api, const http::Request& request)
{
    return [&api, &request](const sale::DocumentRequest& document) {
        const std::optional<sale::StoredDocument> sold
            = document.returnOf.isEmpty() ? std::nullopt : api.store().findId(document.returnOf);
        return sold && maySee(api, request, *sold) ? sale::completedBody(api.store(), document)
                                                   : document.body;
    };
}

QString roleOf(const http::Request& request)
{
    return request.caller ? request.caller->role : adminRole;
}

QString callerName(const http::Request& request)
{
    return request.caller && !request.caller->name.isEmpty() ? request.caller->name
                                                             : QString::fromLatin1(request.clientAddress);
}

} // namespace rights

Till& tillNamed(const Api& api, const http::Request& request, const QString& name)
{
    Till* const till = api.certainTill(name);
    if (till == nullptr)
        throw http::Problem(404, QStringLiteral("There is no register %1.").arg(name));
    if (!rights::mayUse(request, name))
        throw http::Problem(403, QStringLiteral("This token is not for the register %1.").arg(name));
    return *till;
}

Till& tillOf(const Api& api, const http::Request& request)
{
    return tillNamed(api, request, request.parameter(QStringLiteral("name")));
}

Pool& poolNamed(const Api& api, const http::Request& request, const QString& name)
{
    Pool* const pool = api.places().pool(name);
    if (pool == nullptr)
        throw http::Problem(404, QStringLiteral("There is no pool %1.").arg(name));
    if (!rights::mayUse(request, Place::ofPool(name)))
        throw http::Problem(403, QStringLiteral("This token is not for the pool %1.").arg(name));
    return *pool;
}

Pool& poolOf(const Api& api, const http::Request& request)
{
    return poolNamed(api, request, request.parameter(QStringLiteral("name")));
}

namespace {

/// Of which register it was nobody knows any more.
void requireNotArchived(const Api& api, const http::Request& request, const QString& id)
{
    const std::optional<QDateTime> accepted = api.store().archived(id);
    if (accepted && rights::maySee(api, request, id, {}, {}))
        throw archivedDocument(410, id, *accepted);
}

} // namespace

sale::StoredDocument documentOf(const Api& api, const http::Request& request)
{
    const QString id = request.parameter(QStringLiteral("id"));
    const std::optional<sale::StoredDocument> document = api.store().findId(id);
    if (!document)
        requireNotArchived(api, request, id);
    // That there is one is not for everybody.
    if (!document || !rights::maySee(api, request, *document))
        throw http::Problem(404, QStringLiteral("There is no document %1.").arg(id));
    return *document;
}

} // namespace frserver
