#pragma once

#include <QString>

namespace sale {

/// The kinds of documents that differ in what they move in the register.
enum class DocumentKind {
    Sale,
    SaleReturn,
    /// A receipt of a kind whose sums no protocol tells.
    OtherReceipt,
    CashIn,
    CashOut,
    ShiftOpening,
    ShiftClosing,
    /// Any other document that the fiscal drive numbers, such as the report on the state of settlements.
    Report
};

constexpr bool isReceipt(DocumentKind kind)
{
    return kind <= DocumentKind::OtherReceipt;
}

constexpr bool isCash(DocumentKind kind)
{
    return kind == DocumentKind::CashIn || kind == DocumentKind::CashOut;
}

/// The name in JSON and in the journal: "sell", "sellReturn", "receipt", "cashIn", "cashOut", "openShift",
/// "closeShift", "report".
QString documentKindName(DocumentKind kind);
/// OtherReceipt for a name that is none.
DocumentKind documentKindOf(const QString& name);

/// A name that is none is not that of a receipt.
bool isReceiptName(const QString& name);

} // namespace sale
