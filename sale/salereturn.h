#pragma once

#include "documentstore.h"
#include "finding.h"
#include "storeddocument.h"

#include <QList>

namespace receipt {
struct Receipt;
}

namespace sale {

/// The body to make the document of: that of a return of ours completed, any other as it is.
QByteArray completedBody(const DocumentStore& store, const DocumentRequest& request);

/// What keeps a return of that sale from being accepted; empty when nothing does. The sale must be issued,
/// and its returns that are issued or may be, run or wait must not exceed it together with this one: the
/// quantity of each position at the price at which it was issued, and the total. The return of the id given
/// does not count. Throws JournalError.
QList<receipt::Finding> returnFaults(const DocumentStore& store, const QString& saleId,
    const receipt::Receipt& back, const QString& exceptId = {});

/// Accepts a return with returnOf, unless something keeps it: then a ReturnRefused is thrown, or a
/// ReceiptError for a body that is no receipt once it is completed, and nothing is accepted. Of two that are
/// accepted at once and exceed the sale together, one is. Else as DocumentStore::accept, also the condition.
StoredDocument acceptReturn(
    DocumentStore& store, const DocumentRequest& request, const DocumentStore::Condition& condition = {});

} // namespace sale
