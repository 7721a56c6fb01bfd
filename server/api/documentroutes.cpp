#include "api/api.h"
#include "api/apiroute.h"
#include "api/applicablerules.h"
#include "api/audit.h"
#include "api/documentresponse.h"
#include "api/documentview.h"
#include "api/place.h"
#include "api/posteddocument.h"
#include "api/rights.h"
#include "documentanswer.h"
#include "documentarchived.h"
#include "documentkind.h"
#include "findingsjson.h"
#include "http/problem.h"
#include "idconflict.h"
#include "journalerror.h"
#include "returnrefused.h"
#include "salereturn.h"

#include <algorithm>

namespace frserver {

namespace {

using http::Answer;
using http::Problem;
using http::Request;
using http::Response;
using sale::DocumentState;
using sale::StoredDocument;
using std::chrono::seconds;

constexpr seconds longestWait(600);
/// A document that is unknown may be settled before that is told.
constexpr seconds settlingWait(10);

void requireOpen(const Api& api)
{
    if (api.isStopping())
        throw Problem(503, QStringLiteral("stopping"), QStringLiteral("The service is stopping"),
            QStringLiteral("Nothing was stored. Post the same id again."))
            .withHeader("Retry-After", "10");
}

/// That of whoever works it, so that a queue is as long whoever is asked; of a pool the longest of its
/// registers', each of which might make all of it.
int queueLimit(const Api& api, const QString& place)
{
    const Pool* const pool = api.places().pool(Place::poolOf(place).value_or(QString()));
    int limit = 0;
    for (const QString& name : pool != nullptr ? api.places().registersOf(*pool) : QStringList(place)) {
        if (const Till* const till = api.till(name))
            limit = std::max(limit, till->queueLimit());
    }
    return limit == 0 ? api.settings().queueLimit : limit;
}

void requireRoom(const Api& api, const QString& place)
{
    const int queued = api.openDocuments().count(place, DocumentState::Queued);
    const std::optional<QString> pool = Place::poolOf(place);
    if (queued >= queueLimit(api, place))
        throw Problem(429, QStringLiteral("queue-full"), QStringLiteral("Too many documents wait"),
            QStringLiteral("%1 documents wait for the %2 %3. Nothing was stored. Post the same id again.")
                .arg(queued)
                .arg(pool ? QStringLiteral("pool") : QStringLiteral("register"), pool.value_or(place)))
            .withHeader("Retry-After", "10");
}

/// The register tries again sooner when somebody asks, and the fault may be over.
void requireWorkingJournal(const Api& api, Till& till)
{
    try {
        api.requireJournal(till);
    } catch (const sale::JournalError&) {
        till.wake();
        api.requireJournal(till);
    }
}

/// Once the id is whose it is, before anything is stored.
void requireOwn(const Api& api, const Request& request, const std::optional<StoredDocument>& known,
    const QByteArray& body)
{
    if (!known)
        return;
    // It came before there were tokens, or from another program; whoever has its body is the one who knows of
    // it.
    if (request.caller && !api.owners().ownerOf(known->request.id) && known->digest == sale::bodyDigest(body))
        api.owners().claim(known->request.id, request.caller->name);
    if (!rights::maySee(api, request, *known))
        throw Problem(
            403, QStringLiteral("The id %1 is that of a document of somebody else.").arg(known->request.id));
}

Problem returnRefused(const QList<receipt::Finding>& errors)
{
    return Problem(409, QStringLiteral("return-refused"),
        QStringLiteral("The return does not fit what was sold"), QStringLiteral("Nothing was stored."))
        .with(QStringLiteral("errors"), sale::findingsJson(errors));
}

/// A sale of somebody else is none for this caller.
void requireOwnSale(const Api& api, const Request& request, const QString& saleId)
{
    const std::optional<StoredDocument> sold = saleId.isEmpty() ? std::nullopt : api.store().findId(saleId);
    if (sold && !rights::maySee(api, request, *sold))
        throw returnRefused({{receipt::Finding::Error, QStringLiteral("returnOf"), saleId,
            QStringLiteral("is no document of this journal")}});
}

Problem idTaken(const StoredDocument& first)
{
    return Problem(422, QStringLiteral("other-body"), QStringLiteral("The id is that of another document"),
        QStringLiteral("Nothing was stored. One id is one document: the first one stands, whatever it is."))
        .with(QStringLiteral("digest"), QString::fromLatin1(first.digest))
        .with(QStringLiteral("id"), first.request.id)
        .with(QStringLiteral("accepted"), sale::momentJson(first.accepted));
}

/// One that is known is not judged anew: what was right when it was accepted is so for ever.
StoredDocument acceptedDocument(Api& api, const sale::DocumentRequest& document, const PostedDocument& posted)
{
    const auto requireRight = [&posted] { posted.requireRight(); };
    try {
        return document.returnOf.isEmpty() ? api.store().accept(document, requireRight)
                                           : sale::acceptReturn(api.store(), document, requireRight);
    } catch (const sale::ReturnRefused& refused) {
        throw returnRefused(refused.errors());
    } catch (const sale::DocumentArchived& archived) {
        throw archivedDocument(422, document.id, archived.time());
    } catch (const sale::IdConflict&) {
        throw idTaken(api.store().findId(document.id).value());
    }
}

Answer answerOrWait(Api& api, const Request& request, const StoredDocument& document)
{
    seconds wait = std::min(request.preferredWait().value_or(seconds(0)), longestWait);
    if (document.state == DocumentState::Unknown) {
        if (Till* const till = api.till(document.request.registerName))
            till->settle(document.request.id);
        wait = std::max(wait, settlingWait);
    }
    if (sale::isFinal(document.state) || wait == seconds(0) || api.isStopping())
        return documentResponse(api, document, document.state == DocumentState::Issued);
    return api.waiters().wait(document.request.id, wait);
}

/// The register is none for a document that any one of a pool is to make.
Answer take(Api& api, const Request& request, const PostedDocument& posted, Till* till)
{
    const sale::DocumentRequest& document = posted.request;
    const std::optional<StoredDocument> known = api.store().findId(document.id);
    requireOwn(api, request, known, document.body);
    requireOwnSale(api, request, document.returnOf);
    // It stays that of whoever has posted it.
    if (const auto accepted = known ? std::nullopt : api.store().archived(document.id))
        throw archivedDocument(422, document.id, *accepted);
    const bool isToBeQueued = !known || known->state == DocumentState::NotIssued;
    if (isToBeQueued) {
        posted.requireRight();
        requireRoom(api, Place::of(document));
        if (till != nullptr)
            requireWorkingJournal(api, *till);
    }
    if (!known && request.caller)
        api.owners().claim(document.id, request.caller->name);
    const StoredDocument stored = acceptedDocument(api, document, posted);
    if (isToBeQueued)
        api.accepted(stored);
    return answerOrWait(api, request, stored);
}

Answer postDocument(Api& api, const Request& request)
{
    Till& till = tillOf(api, request);
    requireOpen(api);
    PostedDocument posted = postedDocument(request, registerRules(api, request, till.settings()));
    posted.request.registerName = till.settings().name;
    return take(api, request, posted, &till);
}

Answer postToPool(Api& api, const Request& request)
{
    const Pool& pool = poolOf(api, request);
    requireOpen(api);
    return take(api, request, documentForPool(api, request, pool), nullptr);
}

Answer showDocument(Api& api, const Request& request)
{
    const StoredDocument document = documentOf(api, request);
    return Response::json(wholeDocumentView(api, document));
}

/// The document as it stands, for whoever came too late to change it.
Response tooLate(const Api& api, const StoredDocument& document)
{
    return Problem(409, QStringLiteral("document-begun"), QStringLiteral("The document was begun"),
        QStringLiteral("It is %1.").arg(sale::stateName(document.state)))
        .with(documentView(api, document))
        .response();
}

Answer withdrawDocument(Api& api, const Request& request)
{
    const StoredDocument document = api.store().withdraw(documentOf(api, request).request.id);
    if (document.state != DocumentState::NotIssued)
        return tooLate(api, document);
    api.documentChanged(document.request.id);
    audit(request, QStringLiteral("withdrew ") + document.request.id);
    return Response::json(documentView(api, document));
}

/// Where it is to wait. A pool takes receipts alone.
QString destinationOf(const Api& api, const Request& request, const StoredDocument& document)
{
    const QJsonObject body = request.json();
    const QString name = body.value(QStringLiteral("register")).toString();
    const QString pool = body.value(QStringLiteral("pool")).toString();
    if (name.isEmpty() == pool.isEmpty())
        throw Problem(400,
            QStringLiteral(
                "register is the name of the register that is to make it, or pool that of the pool."));
    if (!name.isEmpty())
        return tillNamed(api, request, name).settings().name;
    if (!sale::isReceiptName(document.request.kind))
        throw Problem(400, QStringLiteral("A pool takes receipts alone."));
    return Place::ofPool(poolNamed(api, request, pool).settings().name);
}

Answer moveDocument(Api& api, const Request& request)
{
    const StoredDocument before = documentOf(api, request);
    const QString place = destinationOf(api, request, before);
    requireRoom(api, place);
    const QString& id = before.request.id;
    const std::optional<QString> pool = Place::poolOf(place);
    const StoredDocument document
        = pool ? api.documentPools().moveToPool(id, *pool) : api.store().move(id, place);
    if (document.state != DocumentState::Queued || Place::of(document.request) != place)
        return tooLate(api, document);
    api.documentChanged(id);
    audit(request, QStringLiteral("moved %1 from %2 to %3").arg(id, Place::of(before.request), place));
    api.wake(place);
    return Response::json(documentView(api, document));
}

} // namespace

const QList<ApiRoute>& documentRoutes()
{
    static const QList<ApiRoute> routes{
        {"POST", QStringLiteral("/registers/{name}/documents"), postDocument, rights::selling()},
        {"POST", QStringLiteral("/pools/{name}/documents"), postToPool, rights::selling()},
        {"GET", QStringLiteral("/documents/{id}"), showDocument},
        {"DELETE", QStringLiteral("/documents/{id}"), withdrawDocument, rights::selling()},
        {"POST", QStringLiteral("/documents/{id}/move"), moveDocument, rights::selling()},
    };
    return routes;
}

} // namespace frserver
