#pragma once

#include "register/amounts.h"

#include <QJsonObject>
#include <QStringList>

#include <array>

namespace emulator {

enum class DocumentType { None = 0, NonFiscal = 1, Sale = 2, SaleReturn = 3, CashIn = 4, CashOut = 5 };

/// How far the open document has come; the numbers are those that the state query answers.
enum class Phase {
    Closed = 0,
    Open = 1,
    Positions = 3,
    Subtotal = 5,
    Payment = 7,
    /// Stored in the fiscal drive but not printed to the end: it wants to be finished once more.
    Unprinted = 8,
    /// The same, after an attempt to cancel it.
    CancelImpossible = 16
};

/// Cash, electronic, prepayment, credit, other.
constexpr int paymentKinds = 5;
using Payments = std::array<Money, paymentKinds>;

Money sumOf(const Payments& payments);

struct Cashier
{
    QString name;
    QString inn;
};

/// One position of a receipt.
struct Item
{
    QString name;
    QString barcode;
    Quantity quantity = 0;
    Money price = 0;
    /// Tag 1199; 0 when the host named no rate.
    int tax = 0;
    int paymentMethod = 4;
    int paymentObject = 1;
    int unit = 0;
    QString country;
    QString declaration;
    QByteArray markingCode;
    /// Result of the code's check as the host repeated it; -1 when it did not.
    int markingStatus = -1;
    QJsonObject agent;
    QJsonObject industry;
    /// What a discount for the position as a whole adds to price times quantity.
    Money rounding = 0;

    Money sum() const { return positionSum(price, quantity) + rounding; }
    QJsonObject toJson() const;
};

/// What the register knows of the document that is open.
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
    QStringList body;
    /// What is printed behind the totals: text that came after the subtotal.
    QStringList footer;
    /// What is printed behind everything else.
    QStringList tail;
    /// Requisites of the receipt as a whole, by tag.
    QJsonObject requisites;

    bool isOpen() const { return phase != Phase::Closed; }
    bool isReceipt() const { return type == DocumentType::Sale || type == DocumentType::SaleReturn; }
    bool isMoney() const { return type == DocumentType::CashIn || type == DocumentType::CashOut; }
    bool isStored() const { return phase == Phase::Unprinted || phase == Phase::CancelImpossible; }
    Money total() const;
    Money change() const;
};

} // namespace emulator
