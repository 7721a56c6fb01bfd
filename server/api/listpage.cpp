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

constexpr int usualLimit = 50;
constexpr int greatestLimit = 500;
/// As many documents are searched for a text in some ten milliseconds.
constexpr qint64 searchedAtOnce = 5'000;
constexpr qint64 longestSearchMs = 20'000;

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

qint64 lastSequence(const sale::DocumentStore& store)
{
    const QList<StoredDocument> last
        = store.find({.limit = 1, .order = sale::DocumentQuery::Newest, .withAttempts = false});
    return last.isEmpty() ? 0 : last.constFirst().sequence;
}

} // namespace

ListPage::ListPage(const Api& api, const Request& request)
    : m_api(api)
    , m_request(request)
    , m_query(queryOf(api, request))
    , m_limit(request.queryNumber(QStringLiteral("limit"), 1, greatestLimit).value_or(usualLimit))
{
    if (isSearch() && m_query.before == 0)
        m_query.before = lastSequence(api.store()) + 1;
    m_time.start();
}

bool ListPage::read()
{
    constexpr qsizetype mostLooked = 2000;
    if (isSearch())
        m_query.after = std::max<qint64>(0, m_query.before - 1 - searchedAtOnce);
    // One more, which says whether there is a next page.
    m_query.limit = m_limit + 1;
    const QList<StoredDocument> found = m_api.store().find(m_query);
    m_looked += found.size();
    m_isMore = take(found);
    if (!m_isMore && m_query.after > 0) {
        m_isMore = true;
        m_query.before = m_query.after + 1;
    }
    const bool isLong = m_looked >= mostLooked || m_time.hasExpired(longestSearchMs);
    return !m_isMore || m_documents.size() == m_limit || isLong;
}

/// Whether there are any behind them.
bool ListPage::take(const QList<StoredDocument>& found)
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

QJsonObject ListPage::json() const
{
    return {{QStringLiteral("documents"), m_documents},
        {QStringLiteral("next"), m_isMore ? QJsonValue(QString::number(m_query.before)) : QJsonValue()}};
}

} // namespace frserver
