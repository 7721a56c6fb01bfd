#include "api/api.h"
#include "api/apiroute.h"
#include "api/audit.h"
#include "api/documentview.h"
#include "api/rights.h"
#include "http/problem.h"

#include <QJsonArray>

#include <limits>

namespace frserver {

namespace {

using http::Answer;
using http::Problem;
using http::Request;
using http::Response;
using sale::DocumentState;
using sale::StoredDocument;

constexpr int usualLimit = 50;
constexpr int greatestLimit = 500;

QList<DocumentState> statesOf(const Request& request)
{
    QList<DocumentState> states;
    const QString text = request.queryValue(QStringLiteral("state")).value_or(QString());
    const QStringList names = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& name : names) {
        const std::optional<DocumentState> state = sale::stateOf(name);
        if (!state)
            throw Problem(400,
                QStringLiteral("state is of: queued, running, issued, notIssued, unknown, with commas."));
        states.append(*state);
    }
    return states;
}

QDateTime sinceOf(const Request& request)
{
    const QString text = request.queryValue(QStringLiteral("since")).value_or(QString());
    const QDateTime time = QDateTime::fromString(text, Qt::ISODateWithMs);
    if (!text.isEmpty() && !time.isValid())
        throw Problem(400, QStringLiteral("since is a time as 2025-03-01T09:00:00Z."));
    return time;
}

qint64 cursorOf(const Request& request)
{
    const std::optional<QString> text = request.queryValue(QStringLiteral("cursor"));
    bool isNumber = false;
    const qint64 cursor = text ? text->toLongLong(&isNumber) : 0;
    if (text && (!isNumber || cursor <= 0))
        throw Problem(400, QStringLiteral("cursor is what next of the answer before was."));
    return cursor;
}

sale::DocumentQuery queryOf(const Api& api, const Request& request)
{
    const QString name = request.queryValue(QStringLiteral("register")).value_or(QString());
    if (!name.isEmpty())
        tillNamed(api, request, name);
    return {.states = statesOf(request),
        .registerName = name,
        .since = sinceOf(request),
        .text = request.queryValue(QStringLiteral("text")).value_or(QString()),
        .before = cursorOf(request),
        .order = sale::DocumentQuery::Newest,
        .withAttempts = false};
}

/// A page of what the caller may see. Nobody keeps the others waiting by asking for what hardly is there:
/// then a page is shorter, and the next one goes on.
class ListPage
{
public:
    ListPage(const Api& api, const Request& request)
        : m_api(api)
        , m_request(request)
        , m_query(queryOf(api, request))
        , m_limit(request.queryNumber(QStringLiteral("limit"), 1, greatestLimit).value_or(usualLimit))
    {
    }

    QJsonObject json()
    {
        constexpr int mostLooked = 2000;
        int looked = 0;
        bool isMore = true;
        while (isMore && m_documents.size() < m_limit && looked < mostLooked) {
            // One more, which says whether there is a next page.
            m_query.limit = m_limit + 1;
            const QList<StoredDocument> found = m_api.store().find(m_query);
            looked += static_cast<int>(found.size());
            isMore = take(found);
        }
        return {{QStringLiteral("documents"), m_documents},
            {QStringLiteral("next"), isMore ? QJsonValue(QString::number(m_query.before)) : QJsonValue()}};
    }

private:
    /// Whether there are any behind them.
    bool take(const QList<StoredDocument>& found)
    {
        for (const StoredDocument& document : found) {
            if (m_documents.size() == m_limit)
                return true;
            m_query.before = document.sequence;
            if (rights::maySee(m_api, m_request, document))
                m_documents.append(documentSummary(m_api, document));
        }
        return found.size() == m_query.limit;
    }

    const Api& m_api;
    const Request& m_request;
    sale::DocumentQuery m_query;
    const int m_limit;
    QJsonArray m_documents;
};

Answer listDocuments(Api& api, const Request& request)
{
    return Response::json(ListPage(api, request).json());
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

void requireResolvable(const Api& api, const StoredDocument& document, const sale::DocumentEnding& word)
{
    const auto refuse = [](const QString& why) {
        throw Problem(
            409, QStringLiteral("not-resolvable"), QStringLiteral("The document cannot be resolved so"), why);
    };
    if (document.state != DocumentState::Unknown)
        refuse(QStringLiteral("It is %1, not unknown.").arg(sale::stateName(document.state)));
    if (word.documentNumber == 0)
        return;
    const QList<StoredDocument> others = api.store().find(
        {.drive = document.drive, .documentNumber = word.documentNumber, .limit = 1, .withAttempts = false});
    if (!others.isEmpty())
        refuse(QStringLiteral("That number of the fiscal drive %1 is the document %2.")
                   .arg(document.drive, others.constFirst().request.id));
}

Answer resolve(Api& api, const Request& request)
{
    const StoredDocument document = documentOf(api, request);
    const sale::DocumentEnding word = wordOf(request);
    requireResolvable(api, document, word);
    const QString& id = document.request.id;
    api.store().settle(id, document.attemptCount, word);
    audit(request, QStringLiteral("resolved %1: %2").arg(id, sale::stateName(word.state)));
    api.documentChanged(id);
    return Response::json(wholeDocumentView(api, api.store().findId(id).value()));
}

} // namespace

const QList<ApiRoute>& documentListRoutes()
{
    static const QList<ApiRoute> routes{
        {"GET", QStringLiteral("/documents"), listDocuments},
        {"POST", QStringLiteral("/documents/{id}/resolve"), resolve, rights::administering()},
    };
    return routes;
}

} // namespace frserver
