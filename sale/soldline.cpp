#include "soldline.h"

#include "linesum.h"
#include "marksyntax.h"
#include "money.h"
#include "receipt.h"

namespace sale {

SoldLine soldLineOf(const receipt::ReceiptItem& item)
{
    // A marked piece is known by its code, whatever the host calls it when it comes back.
    if (item.isMarked())
        return {{}, receipt::markIdentity(item.position.getMarkingCode()),
            receipt::kopecksOf(item.position.getPriceWithDisc())};
    return {item.position.getName(), {}, receipt::kopecksOf(item.position.getPriceWithDisc())};
}

qint64 quantityIn(const receipt::Receipt& receipt, const SoldLine& line)
{
    qint64 quantity = 0;
    for (const receipt::ReceiptItem& item : receipt.items) {
        if (item.kind == receipt::ReceiptItem::Position && soldLineOf(item) == line)
            quantity += receipt::lineSumOf(item.position).quantity;
    }
    return quantity;
}

} // namespace sale
