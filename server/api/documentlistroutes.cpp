#include "api/api.h"
#include "api/apiroute.h"
#include "api/audit.h"
#include "api/documentview.h"
#include "api/journalproblem.h"
#include "api/listpage.h"
#include "api/rights.h"
#include "http/pending.h"
#include "http/problem.h"
#include "journalerror.h"
#include "notresolvable.h"
#include "storedtime.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace frserver {

namespace {

using http::Answer;
using http::Problem;
using http::Request;
using http::Response;
using sale::DocumentState;
using sale::StoredDocument;

/// Goes on when others have been answered, as long as somebody waits for it.
void lookLater(Api& api, const std::shared_ptr<ListPage>& page, const std::weak_ptr<http::Pending>& pending)
{
    api.searches().add([page, pending] {
        const std::shared_ptr<http::Pending> waiting = pending.lock();
        if (!waiting || waiting->isOver())
            return false;
        try {
            if (page->lookOn())
                return true;
            waiting->answer(Response::json(page->json()));
        } catch (const sale::JournalError& error) {
            waiting->answer(journalProblem(error));
        }
        return false;
    });
}

Answer listDocuments(Api& api, const Request& request)
{
    const auto page = std::make_shared<ListPage>(api, request);
    if (!page->lookOn())
        return Response::json(page->json());
    constexpr std::chrono::seconds slack(30);
    const auto pending
        = std::make_shared<http::Pending>(api.settings().longestSearch + slack, Response::empty(503));
    lookLater(api, page, pending);
    return pending;
}

sale::DocumentEnding wordOf(const Request& request)
{
    const QJsonObject body = request.json();
    const QString state = body.value(QStringLiteral("state")).toString();
    const qint64 number = body.value(QStringLiteral("documentNumber")).toInteger();
    sale::DocumentEnding ending{
        .by = rights::callerName(request), .note = body.value(QStringLiteral("note")).toString().trimmed()};
    if (state == sale::stateName(DocumentState::Issued)) {
        if (number < 1 || number > std::numeric_limits<quint32>::max())
            throw Problem(
                400, QStringLiteral("issued needs documentNumber, the number that the receipt has."));
        ending.state = DocumentState::Issued;
        ending.documentNumber = static_cast<quint32>(number);
        return ending;
    }
    if (state != sale::stateName(DocumentState::NotIssued))
        throw Problem(400, QStringLiteral("state is issued or notIssued."));
    if (body.contains(QStringLiteral("documentNumber")))
        throw Problem(400, QStringLiteral("A document with a number is issued."));
    if (ending.note.isEmpty())
        throw Problem(400, QStringLiteral("notIssued needs note, what was seen on the tape."));
    ending.state = DocumentState::NotIssued;
    ending.reason = sale::StateReason::Resolved;
    return ending;
}

/// Only its register knows what has become of it, and nobody can ask that one.
bool isOutOfReach(const Api& api, const StoredDocument& document)
{
    if (document.state != DocumentState::Running)
        return false;
    const Till* const till = api.certainTill(document.request.registerName);
    return till == nullptr || till->isLost();
}

/// What registers have told of its drive since nothing could come of it any more; 0 for nothing.
quint32 toldNumber(Api& api, const StoredDocument& document)
{
    const QDateTime silent = api.store().silentSince(document);
    if (!silent.isValid())
        return 0;
    // A clock may be put back a little.
    const qint64 age = silent.secsTo(api.store().timeNow()) - sale::mostSecondsBack;
    qint64 told = 0;
    for (const auto& [name, till] : api.tills()) {
        const QJsonObject view = till->view();
        const QString drive = view[QStringLiteral("identity")][QStringLiteral("drive")].toString();
        if (drive == document.drive && view[QStringLiteral("conditionAge")].toInteger(age) < age)
            told = std::max(
                told, view[QStringLiteral("condition")][QStringLiteral("lastDocument")].toInteger());
    }
    return static_cast<quint32>(told);
}

/// A person's word is taken for what is unknown, or under way where nobody can ask.
void settleByWord(Api& api, const StoredDocument& document, sale::DocumentEnding word)
{
    word.isOutOfReach = isOutOfReach(api, document);
    if (document.state != DocumentState::Unknown && !word.isOutOfReach)
        throw sale::NotResolvable(
            QStringLiteral("It is %1, not unknown.").arg(sale::stateName(document.state)));
    api.store().settle(document.request.id, document.attemptCount, word);
}

Answer resolve(Api& api, const Request& request)
{
    const StoredDocument document = documentOf(api, request);
    const QString& id = document.request.id;
    sale::DocumentEnding word = wordOf(request);
    word.reached = word.documentNumber == 0 ? 0 : toldNumber(api, document);
    try {
        settleByWord(api, document, word);
    } catch (const sale::NotResolvable& refused) {
        throw Problem(409, QStringLiteral("not-resolvable"),
            QStringLiteral("The document cannot be resolved so"), refused.fault());
    }
    audit(request, QStringLiteral("resolved %1: %2").arg(id, sale::stateName(word.state)));
    api.documentChanged(id);
    return Response::json(wholeDocumentView(api, api.store().findId(id).value()));
}

} // namespace

const QList<ApiRoute>& documentListRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/documents"), listDocuments, {},
            {QStringLiteral("register"), QStringLiteral("pool"), QStringLiteral("state"),
                QStringLiteral("since"), QStringLiteral("text"), QStringLiteral("limit"),
                QStringLiteral("cursor")}},
        {"POST", QStringLiteral("/documents/{id}/resolve"), resolve, rights::administering()},
    };
    return routes;
}

} // namespace frserver
