#pragma once

#include "api/postingrules.h"
#include "documentrequest.h"
#include "finding.h"
#include "http/problem.h"
#include "http/request.h"

#include <QList>

namespace frserver {

/// A document as a client posts it, without the register's name, and what is to be said of it.
struct PostedDocument
{
    /// Throws http::Problem (400) with all that is wrong.
    void requireRight() const;

    sale::DocumentRequest request;
    QList<receipt::Finding> findings;
};

/// Reads the body of a request, whose id may stand in Idempotency-Key instead, and judges it as far as that
/// can be done without the register. What belongs to the posting and not to the document (id, startBefore) is
/// no part of the body that is kept.
PostedDocument postedDocument(const http::Request& request, const PostingRules& rules);

/// All that is to be said of a document, errors and warnings, for a check: it need not have an id.
QList<receipt::Finding> documentFindings(const QByteArray& body, const PostingRules& rules);

/// A receipt that need not have an id, with what the sale says whose goods come back. Throws http::Problem
/// (400) with all that is wrong.
QByteArray receiptToDraw(const QByteArray& body, const PostingRules& rules);

/// 400.
http::Problem wrongDocument(
    const QList<receipt::Finding>& errors, const QList<receipt::Finding>& warnings = {});

} // namespace frserver
