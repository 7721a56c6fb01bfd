#pragma once

#include "documentquery.h"
#include "http/request.h"
#include "storeddocument.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>

namespace frserver {

class Api;

/// A page of the documents that a caller may see, the last one accepted first. It is read piece by piece:
/// nobody keeps the others waiting by asking for what hardly is there. A page that would take too long is
/// shorter, and the next one goes on.
class ListPage
{
public:
    /// By the query of the request. Throws http::Problem (400, 403, 404).
    ListPage(const Api& api, const http::Request& request);

    /// A text is looked for in each document, which takes many pieces in a long journal.
    bool isSearch() const { return !m_query.text.isEmpty(); }
    /// The next piece; whether the page is done. Throws sale::JournalError.
    bool read();
    QJsonObject json() const;

private:
    bool take(const QList<sale::StoredDocument>& found);

    const Api& m_api;
    const http::Request m_request;
    sale::DocumentQuery m_query;
    const int m_limit;
    QJsonArray m_documents;
    qsizetype m_looked = 0;
    bool m_isMore = true;
    QElapsedTimer m_time;
};

} // namespace frserver
