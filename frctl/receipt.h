#pragma once

#include "barcode.h"
#include "efrdriver.h"
#include "fdrequisite.h"
#include "fiscaldocument.h"
#include "frpayment.h"
#include "frposition.h"
#include "fruser.h"

#include <QList>
#include <QString>

#include <optional>

namespace frctl {

/// One entry of a receipt, in the order in which it is printed.
struct ReceiptItem
{
    enum Kind { Position, Text, BarcodeItem };

    Kind kind = Position;
    FrPosition position;
    QString text;
    EFrDriver::FontTypes font = EFrDriver::UndefinedFont;
    Barcode barcode;
};

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

} // namespace frctl
