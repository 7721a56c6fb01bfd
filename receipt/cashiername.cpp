#include "cashiername.h"

#include "printertext.h"
#include "receipttr.h"

namespace receipt {

std::optional<QString> shiftCashierWarning(const QString& name, Protocol protocol)
{
    const PrinterText sent = cutText(name, longestLoginName);
    if (protocol != Protocol::Hex || sent.isWhole())
        return std::nullopt;
    return tr("is whole in the receipt, but is cut to %1 characters over HEX in a shift that the "
              "receipt opens; is sent there as \"%2\"")
        .arg(longestLoginName)
        .arg(sent.text);
}

} // namespace receipt
