#pragma once

#include "register/cashier.h"
#include "register/item.h"
#include "register/payments.h"
#include "tape/line.h"

#include <QJsonObject>

namespace emulator {

enum class DocumentType { None = 0, NonFiscal = 1, Sale = 2, SaleReturn = 3, CashIn = 4, CashOut = 5 };

/// How far the open document has come; the numbers are those that the state query answers.
enum class Phase {
    Closed = 0,
    Open = 1,
    Positions = 3,
    Subtotal = 5,
    Payment = 7,
    /// Done, and stored where it is a fiscal one, but not printed to the end: it wants to be finished once
    /// more.
    Unprinted = 8,
    /// The same, after an attempt to cancel it.
    CancelImpossible = 16
};

/// A document as the host has given it up to now.
struct Document
{
    DocumentType type = DocumentType::None;
    Phase phase = Phase::Closed;
    Cashier cashier;
    int taxSystem = 0;
    QString customer;
    /// The receipt goes to the customer by mail only.
    bool unprinted = false;
    QList<Item> items;
    Payments payments{};
    /// Sum of a cash-in or cash-out.
    Money money = 0;
    /// What is printed between title and totals, in the order of the host's commands.
    QList<tape::Line> body;
    /// What is printed behind the totals: text that came after the subtotal.
    QList<tape::Line> footer;
    /// What is printed behind everything else.
    QList<tape::Line> tail;
    /// Requisites of the receipt as a whole, by tag.
    QJsonObject requisites;

    bool isOpen() const { return phase != Phase::Closed; }
    bool isReceipt() const { return type == DocumentType::Sale || type == DocumentType::SaleReturn; }
    bool isMoney() const { return type == DocumentType::CashIn || type == DocumentType::CashOut; }
    /// A receipt that can still become anything.
    bool isReceiptInWork() const { return isReceipt() && !isStored(); }
    bool isStored() const { return phase == Phase::Unprinted || phase == Phase::CancelImpossible; }
    Money total() const { return sumOf(items); }
    /// What is not paid yet.
    Money missing() const { return qMax<Money>(0, total() - sumOf(payments)); }
    Money change() const { return qMax<Money>(0, sumOf(payments) - total()); }
    /// What cash pays once the change is given and what is missing is there.
    Money cash() const { return payments[0] + missing() - change(); }
    /// Where text goes that the host has printed now.
    QList<tape::Line>& printedPart() { return phase >= Phase::Subtotal ? footer : body; }
};

} // namespace emulator
