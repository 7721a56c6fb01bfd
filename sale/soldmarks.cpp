#include "soldmarks.h"

#include "journalerror.h"
#include "receipt.h"
#include "salejournal.h"

namespace sale {

namespace {

QString reasonOf(const MarkRecord& sold)
{
    const QString time = sold.time.toLocalTime().toString(Qt::ISODate);
    if (sold.document == 0)
        return QStringLiteral("may have been sold on %1: that sale was broken off").arg(time);
    return QStringLiteral("was sold on %1, document %2 of fiscal drive %3, and not returned since")
        .arg(time, QString::number(sold.document), sold.drive);
}

} // namespace

QList<receipt::Finding> soldMarks(
    const SaleJournal& journal, const receipt::Receipt& receipt, const QString& exceptId)
{
    QList<receipt::Finding> findings;
    if (receipt.isReturn())
        return findings;
    for (qsizetype index = 0; index < receipt.items.size(); ++index) {
        const receipt::ReceiptItem& item = receipt.items.at(index);
        if (!item.isMarked())
            continue;
        const QString code = item.position.getMarkingCode();
        if (const std::optional<MarkRecord> sold = journal.soldMark(code, exceptId))
            findings.append({receipt::Finding::Warning, markPath(item, index), code, reasonOf(*sold)});
    }
    return findings;
}

receipt::Finding journalWarning(const JournalError& error)
{
    return {receipt::Finding::Warning, {}, {},
        QString::fromUtf8(error.what())
            + QStringLiteral(": a marking code that is sold twice is not noticed")};
}

} // namespace sale
