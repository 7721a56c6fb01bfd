#pragma once

#include "register/amounts.h"

#include <QJsonObject>
#include <QString>

namespace emulator {

/// One position of a receipt.
struct Item
{
    QString name;
    QString barcode;
    Quantity quantity = 0;
    Money price = 0;
    /// Code of the VAT rate; 0 when the host named none.
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

Money sumOf(const QList<Item>& items);

} // namespace emulator
