#pragma once

#include "documentquery.h"
#include "http/request.h"
#include "storeddocument.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>

namespace frserver {

class Api;

/// A page of the documents that a request asks for and its caller may see, the last one accepted first. A
/// long journal is looked through piece by piece, so that nobody else has to wait while hardly anything in it
/// is what is looked for; and not for ever: then a page is shorter, and the next one goes on.
class ListPage
{
public:
    /// Throws http::Problem. The interface must outlive it.
    ListPage(const Api& api, const http::Request& request);

    /// Looks at the next piece. False when the page is done. Throws JournalError.
    bool lookOn();
    QJsonObject json() const;

private:
    bool take(const QList<sale::StoredDocument>& found);
    void adapt(qint64 spentMs);

    const Api& m_api;
    const http::Request m_request;
    sale::DocumentQuery m_query;
    const int m_limit;
    /// Whether each document of the journal is looked at, since no index has the answer.
    const bool m_isScan;
    /// Documents of the journal in the next piece.
    qint64 m_piece;
    QElapsedTimer m_age;
    QElapsedTimer m_turn;
    QJsonArray m_documents;
    bool m_isMore = true;
};

} // namespace frserver
