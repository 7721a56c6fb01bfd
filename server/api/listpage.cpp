#include "api/listpage.h"

#include "api/api.h"
#include "api/documentview.h"
#include "api/rights.h"
#include "http/problem.h"

#include <algorithm>

namespace frserver {

namespace {

using http::Problem;
using http::Request;
using sale::DocumentState;
using sale::StoredDocument;

/// What is read and shown at once.
constexpr int mostAtOnce = 100;
/// A piece takes about so long.
constexpr qint64 shortMs = 1;
constexpr qint64 longMs = 2;
constexpr qint64 mostInPiece = 50'000;

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
    // One without a zone would be another moment on another machine.
    if (!text.isEmpty() && (!time.isValid() || time.timeSpec() == Qt::LocalTime))
        throw Problem(400, QStringLiteral("since is a time with its zone, as 2025-03-01T09:00:00Z."));
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
    if (!name.isEmpty() && !(api.missingRegisters().contains(name) && rights::mayUse(request, name)))
        tillNamed(api, request, name);
    const QString pool = request.queryValue(QStringLiteral("pool")).value_or(QString());
    if (!pool.isEmpty())
        poolNamed(api, request, pool);
    return {.states = statesOf(request),
        .registerName = name,
        .pool = pool,
        .since = sinceOf(request),
        .text = request.queryValue(QStringLiteral("text")).value_or(QString()),
        .before = cursorOf(request),
        .order = sale::DocumentQuery::Newest,
        .withAttempts = false};
}

qint64 behindLast(const sale::DocumentStore& store)
{
    const QList<StoredDocument> last
        = store.find({.limit = 1, .order = sale::DocumentQuery::Newest, .withAttempts = false});
    return last.isEmpty() ? 1 : last.constFirst().sequence + 1;
}

bool isScan(const sale::DocumentQuery& query)
{
    // Those that are not done with have an index of their own, as has each register's.
    const bool isEnded = std::any_of(query.states.cbegin(), query.states.cend(), sale::isFinal);
    return !query.text.isEmpty() || !query.pool.isEmpty() || query.since.isValid()
        || (isEnded && query.registerName.isEmpty());
}

} // namespace

ListPage::ListPage(const Api& api, const Request& request)
    : m_api(api)
    , m_request(request)
    , m_query(queryOf(api, request))
    , m_limit(request.queryNumber(QStringLiteral("limit"), 1, greatestLimit).value_or(usualLimit))
    , m_isScan(isScan(m_query))
    , m_piece(api.settings().searchPiece)
{
    if (m_query.before == 0)
        m_query.before = behindLast(api.store());
    m_age.start();
}

bool ListPage::lookOn()
{
    m_turn.start();
    // One more, which says whether there is a next page.
    m_query.limit = std::min(mostAtOnce, m_limit + 1 - static_cast<int>(m_documents.size()));
    m_query.after = m_isScan ? std::max<qint64>(0, m_query.before - 1 - m_piece) : 0;
    const QList<StoredDocument> found = m_api.store().find(m_query);
    adapt(m_turn.elapsed());
    if (!take(found))
        return false;
    return m_age.elapsed() < m_api.settings().longestSearch.count();
}

/// Whether there may be more for this page.
bool ListPage::take(const QList<StoredDocument>& found)
{
    for (const StoredDocument& document : found) {
        if (m_documents.size() == m_limit)
            return false;
        // Bodies that were not read yet take their time.
        if (m_turn.elapsed() >= m_api.settings().readingTurn.count() && &document != &found.constFirst())
            return true;
        m_query.before = document.sequence;
        if (rights::maySee(m_api, m_request, document))
            m_documents.append(documentSummary(m_api, document));
    }
    if (found.size() == m_query.limit)
        return true;
    // All of the piece was seen.
    m_query.before = m_query.after + 1;
    m_isMore = m_query.after != 0;
    return m_isMore;
}

void ListPage::adapt(qint64 spentMs)
{
    if (spentMs < shortMs)
        m_piece = std::min(2 * m_piece, mostInPiece);
    else if (spentMs > longMs)
        m_piece = std::max<qint64>(m_piece / 2, 1);
}

QJsonObject ListPage::json() const
{
    return {{QStringLiteral("documents"), m_documents},
        {QStringLiteral("next"), m_isMore ? QJsonValue(QString::number(m_query.before)) : QJsonValue()}};
}

} // namespace frserver
