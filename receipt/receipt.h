#pragma once

#include "fdrequisite.h"
#include "fiscaldocument.h"
#include "frpayment.h"
#include "fruser.h"
#include "receiptitem.h"

#include <QList>

#include <optional>

namespace receipt {

/// A receipt as the contract takes it, checked as far as this can be done without the register.
struct Receipt
{
    FiscalDocument document;
    /// The cashier that the file names.
    std::optional<FrUser> cashier;
    QList<FdRequisite> requisites;
    QList<ReceiptItem> items;
    QList<FrPayment> payments;
    /// Kopecks.
    qint64 total = 0;
    qint64 paid = 0;

    bool isReturn() const;
    bool hasMarkedItems() const;
};

} // namespace receipt
