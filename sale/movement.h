#pragma once

#include "drivemark.h"

#include <QJsonObject>

namespace receipt {
struct Receipt;
}

namespace sale {

/// What a document of ours moves in the register when it is issued. Kept with the mark before the document:
/// the two are what a document that was broken off is judged by later.
struct Movement
{
    bool operator==(const Movement&) const = default;

    QJsonObject toJson() const;
    static Movement fromJson(const QJsonObject& json);

    DocumentKind kind = DocumentKind::OtherReceipt;
    /// Of a receipt: what it adds to the shift's sums of its kind, the cash without the change.
    PaymentSums payments = {};
    /// Of cash in and cash out. Kopecks.
    qint64 cash = 0;
};

Movement movementOf(const receipt::Receipt& receipt);
/// The mark as the document leaves it, by arithmetic.
DriveMark markAfter(const DriveMark& before, const Movement& ours);

} // namespace sale
