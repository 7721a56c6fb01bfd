#include "movement.h"

#include "money.h"
#include "paymentsjson.h"
#include "receipt.h"

namespace sale {

namespace {

const QString movedKindKey = QStringLiteral("kind");
const QString movedPaymentsKey = QStringLiteral("payments");
const QString movedCashKey = QStringLiteral("cash");

DocumentKind receiptKind(const receipt::Receipt& receipt)
{
    switch (receipt.document.getDocumentType()) {
    case hw::fr::CheckSale:
        return DocumentKind::Sale;
    case hw::fr::CheckSaleReturn:
        return DocumentKind::SaleReturn;
    default:
        return DocumentKind::OtherReceipt;
    }
}

void moveReceipt(DriveMark& mark, const Movement& ours)
{
    if (mark.nextReceipt)
        ++*mark.nextReceipt;
    if (mark.drawer)
        *mark.drawer += ours.kind == DocumentKind::Sale ? ours.payments.value(0) : -ours.payments.value(0);
    if (!mark.sums.contains(ours.kind))
        return;
    mark.areSumsRead = false;
    PaymentSums& sums = mark.sums[ours.kind];
    for (auto payment = ours.payments.cbegin(); payment != ours.payments.cend(); ++payment)
        sums[payment.key()] += payment.value();
}

void moveCash(DriveMark& mark, const Movement& ours)
{
    if (mark.drawer)
        *mark.drawer += ours.kind == DocumentKind::CashIn ? ours.cash : -ours.cash;
    if (mark.cash.contains(ours.kind)) {
        ++mark.cash[ours.kind].count;
        mark.cash[ours.kind].sum += ours.cash;
    }
}

/// What is told of a shift holds no longer in the next one.
void moveShift(DriveMark& mark, const Movement& ours)
{
    if (ours.kind == DocumentKind::Report)
        return;
    const DriveMark drive{mark.drive, mark.lastDocument, mark.isNumberRead};
    mark = drive;
    mark.isShiftOpen = ours.kind == DocumentKind::ShiftOpening;
}

} // namespace

QJsonObject Movement::toJson() const
{
    QJsonObject json{{movedKindKey, documentKindName(kind)}};
    if (!payments.isEmpty())
        json.insert(movedPaymentsKey, paymentsJson(payments));
    if (isCash(kind))
        json.insert(movedCashKey, cash);
    return json;
}

Movement Movement::fromJson(const QJsonObject& json)
{
    return {documentKindOf(json.value(movedKindKey).toString()),
        paymentsOf(json.value(movedPaymentsKey).toObject()), json.value(movedCashKey).toInteger()};
}

DriveMark markAfter(const DriveMark& before, const Movement& ours)
{
    DriveMark mark = before;
    if (isCash(ours.kind)) {
        moveCash(mark, ours);
        return mark;
    }
    if (mark.lastDocument != 0)
        ++mark.lastDocument;
    mark.isNumberRead = false;
    if (isReceipt(ours.kind))
        moveReceipt(mark, ours);
    else
        moveShift(mark, ours);
    return mark;
}

Movement movementOf(const receipt::Receipt& receipt)
{
    Movement movement{receiptKind(receipt)};
    for (const FrPayment& payment : receipt.payments)
        movement.payments[payment.kind] += receipt::kopecksOf(payment.getSum());
    // Cash comes back as change, and stands for what is missing.
    movement.payments[0] += receipt.total - receipt.paid;
    return movement;
}

} // namespace sale
