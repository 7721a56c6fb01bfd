#pragma once

#include "http/access.h"
#include "http/request.h"
#include "storeddocument.h"

#include <functional>

namespace frserver {

class Api;
class Pool;
class Till;

/// What a caller may: without tokens all, else what its role and its registers say.
namespace rights {

/// Roles that a route may be used with.
http::Access selling();
http::Access administering();
http::Access anybody();

/// The place is a register, or "pool:NAME".
bool mayUse(const http::Request& request, const QString& place);
/// A token that sells sees its own documents alone.
bool maySee(const Api& api, const http::Request& request, const sale::StoredDocument& document);
bool maySee(const Api& api, const http::Request& request, const QString& id, const QString& registerName,
    const QString& pool);
/// How a return is completed, while the request is answered: as sale::completedBody does, of a sale that the
/// caller may see. What that of somebody else says is not for this one.
std::function<QByteArray(const sale::DocumentRequest&)> completion(
    const Api& api, const http::Request& request);
bool isBoundToOwn(const http::Request& request);
/// "read", "sell" or "admin"; the last one without tokens.
QString roleOf(const http::Request& request);
/// Whom the journal and the log name.
QString callerName(const http::Request& request);

} // namespace rights

/// The register of the path. Throws http::Problem (404, 403), and sale::JournalError while nobody knows which
/// registers other services have: a client takes 404 for the last word.
Till& tillOf(const Api& api, const http::Request& request);
/// The same by its name.
Till& tillNamed(const Api& api, const http::Request& request, const QString& name);
/// The pool of the path, and by its name. Throw http::Problem (404, 403).
Pool& poolOf(const Api& api, const http::Request& request);
Pool& poolNamed(const Api& api, const http::Request& request, const QString& name);
/// The document of the path. Throws http::Problem (404), also for one that the caller may not see, and 410
/// for one that was archived.
sale::StoredDocument documentOf(const Api& api, const http::Request& request);

} // namespace frserver
