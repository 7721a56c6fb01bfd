#include "receiptparser.h"

#include "jsonfields.h"
#include "jsontext.h"
#include "linesum.h"
#include "money.h"
#include "positionparser.h"
#include "receiptnames.h"
#include "receipttr.h"
#include "receipttype.h"

#include <algorithm>

namespace receipt {

namespace {

enum ItemKind { PositionKind, TextItemKind, BarcodeKind };
constexpr NamedValue itemKinds[]
    = {{"position", PositionKind}, {"text", TextItemKind}, {"barcode", BarcodeKind}};

constexpr int cashierNameLength = 64;
constexpr int lineLength = 256;

EFrDriver::FontTypes font(bool wide, bool high)
{
    if (wide)
        return high ? EFrDriver::DoubleSizeFont : EFrDriver::DoubleWidthFont;
    return high ? EFrDriver::DoubleHeightFont : EFrDriver::UndefinedFont;
}

ReceiptItem textItem(JsonFields& fields)
{
    ReceiptItem item;
    item.kind = ReceiptItem::Text;
    item.text = fields.text(QStringLiteral("text"), lineLength);
    const bool wide = fields.flag(QStringLiteral("doubleWidth"), false);
    item.font = font(wide, fields.flag(QStringLiteral("doubleHeight"), false));
    return item;
}

ReceiptItem barcodeItem(JsonFields& fields)
{
    const QString scale = QStringLiteral("scale");
    const QString height = QStringLiteral("height");
    ReceiptItem item;
    item.kind = ReceiptItem::BarcodeItem;
    item.barcode.text = fields.scannedText(QStringLiteral("barcode"), lineLength);
    item.barcode.type = fields.choice(QStringLiteral("barcodeType"), names::barcodeTypes());
    if (fields.has(scale))
        item.barcode.moduleWidth = fields.integer(scale, 1, 10);
    if (fields.has(height))
        item.barcode.height = fields.integer(height, 1, 255);
    if (!fields.flag(QStringLiteral("printText"), true))
        item.barcode.textPosition = 0;
    return item;
}

QList<ReceiptItem> positionItems(JsonFields& fields, bool isSplitAllowed)
{
    QList<ReceiptItem> items;
    for (const FrPosition& position : positionsFromJson(fields, isSplitAllowed)) {
        items.append(ReceiptItem());
        items.last().position = position;
    }
    return items;
}

QList<ReceiptItem> issuedItems(JsonFields& fields, bool isSplitAllowed)
{
    const QString type = QStringLiteral("type");
    switch (fields.has(type) ? fields.word(type, itemKinds) : PositionKind) {
    case PositionKind:
        return positionItems(fields, isSplitAllowed);
    case TextItemKind:
        return {textItem(fields)};
    case BarcodeKind:
        return {barcodeItem(fields)};
    default:
        fields.takeAll();
        return {};
    }
}

void readItem(JsonFields& fields, bool isSplitAllowed, Receipt& receipt)
{
    for (ReceiptItem item : issuedItems(fields, isSplitAllowed)) {
        item.path = fields.path({});
        if (item.kind == ReceiptItem::Position)
            receipt.total += lineSumOf(item.position).amount();
        receipt.items.append(item);
    }
}

const QString& paymentsName()
{
    static const QString name = QStringLiteral("payments");
    return name;
}

void readCashier(JsonFields& fields, Receipt& receipt)
{
    FrUser cashier;
    cashier.name = fields.text(QStringLiteral("name"), cashierNameLength);
    cashier.inn = fields.optionalInn(QStringLiteral("vatin")).value_or(QString());
    receipt.cashier = cashier;
}

void readCustomer(JsonFields& fields, Receipt& receipt)
{
    FdRequisiteMap block;
    if (const auto address = fields.optionalText(QStringLiteral("emailOrPhone"), 64)) {
        receipt.document.setCustomerAddress(*address);
        receipt.requisites.append(FdRequisite(EFrDriver::CustomerAddress, *address));
    }
    if (const auto name = fields.optionalText(QStringLiteral("name")))
        block.insert(EFrDriver::CustomerName, FdRequisite(EFrDriver::CustomerName, *name));
    if (const auto inn = fields.optionalInn(QStringLiteral("vatin")))
        block.insert(EFrDriver::CustomerInn, FdRequisite(EFrDriver::CustomerInn, *inn));
    if (!block.isEmpty())
        receipt.requisites.append(FdRequisite::composite(EFrDriver::CustomerBlock, block));
}

void readTaxSystem(JsonFields& fields, Receipt& receipt)
{
    const QString name = QStringLiteral("taxationType");
    if (!fields.has(name))
        return;
    const int system = fields.choice(name, names::taxSystems());
    receipt.document.setTaxSystem(static_cast<hw::fr::common::TaxSystemType>(system));
    receipt.requisites.append(FdRequisite(EFrDriver::TaxSystem, system));
}

void readHead(JsonFields& fields, Receipt& receipt)
{
    const QString cashier = QStringLiteral("operator");
    const QString customer = QStringLiteral("clientInfo");
    receipt.document.setDocumentType(receiptType(fields));
    readTaxSystem(fields, receipt);
    if (fields.flag(QStringLiteral("electronically"), false))
        receipt.document.setPrintMode(CheckPrintNone);
    if (fields.has(cashier))
        fields.object(cashier, [&](JsonFields& data) { readCashier(data, receipt); });
    if (fields.has(customer))
        fields.object(customer, [&](JsonFields& data) { readCustomer(data, receipt); });
    if (const auto place = fields.optionalText(QStringLiteral("paymentsPlace")))
        receipt.requisites.append(FdRequisite(EFrDriver::SettlementPlace, *place));
    if (const auto extra = fields.optionalText(QStringLiteral("additionalAttribute"), 16))
        receipt.requisites.append(FdRequisite(EFrDriver::AdditionalReceiptRequisite, *extra));
}

/// Gives what is paid without cash, in kopecks.
qint64 readPayments(JsonFields& fields, Receipt& receipt)
{
    qint64 withoutCash = 0;
    fields.objects(paymentsName(), [&](JsonFields& payment) {
        const int kind = payment.choice(QStringLiteral("type"), names::paymentKinds());
        const qint64 sum = payment.kopecks(QStringLiteral("sum"));
        receipt.payments.append(FrPayment(kind, roubles(sum)));
        receipt.paid += sum;
        withoutCash += kind == 0 ? 0 : sum;
    });
    return withoutCash;
}

void judgePayments(const JsonFields& fields, const Receipt& receipt, qint64 withoutCash)
{
    const QString& name = paymentsName();
    if (receipt.paid < receipt.total)
        fields.fail(
            name, tr("%1 do not cover the total, %2").arg(moneyText(receipt.paid), moneyText(receipt.total)));
    else if (withoutCash > receipt.total)
        fields.fail(name,
            tr("%1 without cash are more than the total, %2; only cash gives change")
                .arg(moneyText(withoutCash), moneyText(receipt.total)));
}

bool hasPosition(const Receipt& receipt)
{
    return std::any_of(receipt.items.cbegin(), receipt.items.cend(),
        [](const ReceiptItem& item) { return item.kind == ReceiptItem::Position; });
}

} // namespace

Receipt readReceipt(const QJsonObject& json, bool isSplitAllowed, QList<ReceiptError>& errors)
{
    const QString items = QStringLiteral("items");
    JsonFields fields(json, {}, errors);
    Receipt receipt;
    readHead(fields, receipt);
    const qsizetype headErrors = errors.size();
    fields.objects(items, [&](JsonFields& item) { readItem(item, isSplitAllowed, receipt); });
    if (errors.size() == headErrors && !hasPosition(receipt))
        fields.fail(items, tr("must have a position"));
    const qint64 withoutCash = readPayments(fields, receipt);
    if (errors.size() == headErrors)
        judgePayments(fields, receipt, withoutCash);
    fields.finish();
    return receipt;
}

Receipt receiptFromJson(const QJsonObject& json, bool isSplitAllowed)
{
    QList<ReceiptError> errors;
    const Receipt receipt = readReceipt(json, isSplitAllowed, errors);
    if (!errors.isEmpty())
        throw ReceiptError(errors);
    return receipt;
}

Receipt receiptFromText(const QByteArray& text)
{
    return receiptFromJson(jsonFromText(text));
}

} // namespace receipt
