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
    /// Name of the measure unit, where the host gave one.
    QString measure;
    QString country;
    QString declaration;
    QByteArray markingCode;
    /// Result of the code's check as the host repeated it; -1 when it did not.
    int markingStatus = -1;
    /// Hexadecimal code of the goods by the tag of its kind, where the host gave one.
    QJsonObject goodsCode;
    /// What becomes of marked goods: sold, returned; -1 when the host did not say.
    int assignedStatus = -1;
    QJsonObject agent;
    QJsonObject industry;
    /// What a discount for the position as a whole adds to price times quantity.
    Money rounding = 0;
    /// Price before the discount, and the discount for the whole position as the host signed it; 0 and 0 when
    /// it gave the reduced price alone.
    Money fullPrice = 0;
    Money discount = 0;

    Money sum() const { return positionSum(price, quantity) + rounding; }
    QJsonObject toJson() const;

    bool operator==(const Item&) const = default;
};

Money sumOf(const QList<Item>& items);

} // namespace emulator
