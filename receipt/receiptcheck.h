#pragma once

#include "finding.h"
#include "protocol.h"
#include "receipt.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QStringList>

namespace receipt {

/// What a receipt is judged by besides itself.
struct CheckOptions
{
    Protocol protocol = Protocol::Xml;
    /// The day of the sale.
    QDate today = {};
    /// Paths of fields that the protocol does not carry and that may be left out: "items[2].scale" of one
    /// item, "items[].scale" of all, "clientInfo.name".
    QStringList drop = {};
    /// Positions whose discount does not divide into whole kopecks a piece become two.
    bool split = false;
};

/// A receipt with all that is to be said of it. With an error among the findings it must not be sent.
struct CheckedReceipt
{
    Receipt receipt;
    QList<Finding> findings;

    bool hasErrors() const;
};

/// Reads a receipt from the bytes of a file and judges it by all rules that need no register. Throws
/// ReceiptError for what cannot be read as a receipt; it has all that is to be said of it.
CheckedReceipt checkedReceipt(const QByteArray& text, const CheckOptions& options);

} // namespace receipt
