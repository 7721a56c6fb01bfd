#include "receipt.h"

#include <algorithm>

namespace receipt {

bool Receipt::isReturn() const
{
    switch (document.getDocumentType()) {
    case hw::fr::CheckSaleReturn:
    case hw::fr::CheckPurchaseReturn:
    case hw::fr::CheckReturnCorrection:
        return true;
    default:
        return false;
    }
}

bool Receipt::hasMarkedItems() const
{
    return std::any_of(items.cbegin(), items.cend(), [](const ReceiptItem& item) { return item.isMarked(); });
}

} // namespace receipt
