#include "soldmarks.h"

#include "documentkind.h"
#include "documentstore.h"
#include "markentry.h"
#include "marksyntax.h"
#include "receipt.h"
#include "saletr.h"

namespace sale {

namespace {

bool isReturn(const StoredDocument& document)
{
    return document.request.kind == documentKindName(DocumentKind::SaleReturn);
}

/// The sale behind which the piece was not returned. A return counts when it is known to have been issued.
std::optional<StoredDocument> lastSale(
    const DocumentStore& store, const QString& code, const QString& exceptId)
{
    const QList<StoredDocument> found
        = store.find({.states = {DocumentState::Issued, DocumentState::Running, DocumentState::Unknown},
            .goods = receipt::markIdentity(code),
            .withAttempts = false});
    for (const StoredDocument& document : found) {
        if (document.request.id == exceptId
            || (isReturn(document) && document.state != DocumentState::Issued))
            continue;
        return isReturn(document) ? std::nullopt : std::optional(document);
    }
    return std::nullopt;
}

QString soldReason(const StoredDocument& sold, Translation said)
{
    const QString time
        = (sold.settled.isValid() ? sold.settled : sold.begun).toLocalTime().toString(Qt::ISODate);
    if (sold.state != DocumentState::Issued)
        return said(QT_TR_NOOP("may have been sold on %1: that sale was broken off")).arg(time);
    return said(QT_TR_NOOP("was sold on %1, document %2 of fiscal drive %3, and not returned since"))
        .arg(time, QString::number(sold.documentNumber), sold.drive);
}

} // namespace

QList<receipt::Finding> soldMarks(
    const DocumentStore& store, const receipt::Receipt& receipt, const QString& exceptId)
{
    QList<receipt::Finding> findings;
    if (receipt.isReturn())
        return findings;
    for (qsizetype index = 0; index < receipt.items.size(); ++index) {
        const receipt::ReceiptItem& item = receipt.items.at(index);
        if (!item.isMarked())
            continue;
        const QString code = item.position.getMarkingCode();
        if (const std::optional<StoredDocument> sold = lastSale(store, code, exceptId))
            findings.append({receipt::Finding::Warning, markPath(item, index), code, soldReason(*sold, tr),
                soldReason(*sold, english)});
    }
    return findings;
}

} // namespace sale
