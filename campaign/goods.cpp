#include "goods.h"

#include "money.h"

namespace {

constexpr int cashKind = 0;
constexpr int cardKind = 1;

FiscalDocument saleHead()
{
    FiscalDocument document(hw::fr::CheckSale);
    document.setCashierName(QStringLiteral("Иванова"));
    document.setTaxSystem(hw::fr::common::TaxSystemType(1));
    return document;
}

void addPosition(receipt::Receipt& receipt, const QString& name, const QString& mark, Random& content)
{
    const int price = content.between(1, 999'999);
    const int drawn = content.between(1, 3);
    const int count = mark.isEmpty() ? drawn : 1;
    receipt.total += qint64{price} * count;
    receipt::ReceiptItem item;
    item.position = FrPosition(name, receipt::roubles(price), count);
    item.position.setTaxCode(content.between(1, 6));
    item.position.setPaymentMethod(4);
    item.position.setPaymentObject(mark.isEmpty() ? 1 : 33);
    if (!mark.isEmpty())
        item.position.setMarkingCode(mark, MarkCommon);
    receipt.items.append(item);
}

void addText(receipt::Receipt& receipt)
{
    receipt::ReceiptItem item;
    item.kind = receipt::ReceiptItem::Text;
    item.text = QStringLiteral("Спасибо за покупку");
    receipt.items.append(item);
}

void pay(receipt::Receipt& receipt, int kind, qint64 sum)
{
    receipt.payments.append(FrPayment(kind, receipt::roubles(sum)));
    receipt.paid += sum;
}

} // namespace

receipt::Receipt drawSale(const QString& name, Random& content)
{
    receipt::Receipt receipt;
    receipt.document = saleHead();
    receipt.requisites = {FdRequisite(EFrDriver::TaxSystem, hw::fr::common::TaxSystemGeneral)};
    const bool isMarked = content.chance(100);
    const int positions = content.between(1, 3);
    const QString mark = QStringLiteral("0104601234567890215%1\x1D"
                                        "93test")
                             .arg(content.between(1000, 9999));
    for (int i = 0; i < positions; ++i)
        addPosition(receipt, name, isMarked && i == 0 ? mark : QString(), content);
    if (content.chance(300))
        addText(receipt);
    const qint64 card = content.chance(500) ? receipt.total / 2 : 0;
    const qint64 cash = receipt.total - card + (content.chance(500) ? 10'000 : 0);
    if (card > 0)
        pay(receipt, cardKind, card);
    pay(receipt, cashKind, cash);
    return receipt;
}
