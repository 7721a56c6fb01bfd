#include "markentry.h"

#include "frutils.h"
#include "receipt.h"

namespace sale {

namespace {
constexpr QChar groupSeparator(0x1D);
} // namespace

MarkEntry markEntryOf(const receipt::Receipt& receipt)
{
    MarkEntry entry;
    entry.isReturn = receipt.isReturn();
    for (const receipt::ReceiptItem& item : receipt.items) {
        if (!item.position.getMarkingCode().isEmpty())
            entry.marks.append(markIdentity(item.position.getMarkingCode()));
    }
    return entry;
}

QString markIdentity(const QString& markingCode)
{
    // Some scanners put one in front of the code as well.
    return FrUtils::getMarkingCodeWithSeparators(markingCode)
        .section(groupSeparator, 0, 0, QString::SectionSkipEmpty);
}

QString markPath(const receipt::ReceiptItem& item, qsizetype index)
{
    const QString path = item.path.isEmpty() ? QStringLiteral("items[%1]").arg(index) : item.path;
    return path + QStringLiteral(".markingCode");
}

} // namespace sale
