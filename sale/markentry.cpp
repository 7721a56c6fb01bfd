#include "markentry.h"

#include "marksyntax.h"
#include "receipt.h"

namespace sale {

MarkEntry markEntryOf(const receipt::Receipt& receipt)
{
    MarkEntry entry;
    entry.isReturn = receipt.isReturn();
    for (const receipt::ReceiptItem& item : receipt.items) {
        if (item.isMarked())
            entry.marks.append(receipt::markIdentity(item.position.getMarkingCode()));
    }
    return entry;
}

QString markPath(const receipt::ReceiptItem& item, qsizetype index)
{
    const QString path = item.path.isEmpty() ? QStringLiteral("items[%1]").arg(index) : item.path;
    return path + QStringLiteral(".markingCode");
}

} // namespace sale
