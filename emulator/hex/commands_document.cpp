#include "hex/commands.h"

#include "hex/codepage.h"
#include "register/markingquery.h"
#include "register/tags.h"

namespace emulator::hexcommands {

namespace {

constexpr int quantityDecimals = 3;
constexpr int moneyDecimals = 2;
constexpr qsizetype longestLine = 256;
constexpr qsizetype longestItemName = 48;
constexpr qsizetype longestAddress = 64;
constexpr int barcodeKinds = 9;

const char* const barcodeNames[barcodeKinds]
    = {"UPC-A", "UPC-E", "EAN-13", "EAN-8", "CODE39", "ITF", "CODABAR", "CODE93", "CODE128"};

// Digits that a code must have, 0 for any text.
constexpr int barcodeDigits[barcodeKinds] = {11, 6, 12, 7, 0, 0, 0, 0, 0};

bool fitsBarcode(int kind, const QString& data)
{
    if (data.isEmpty())
        return false;
    const int digits = barcodeDigits[kind];
    bool number = false;
    data.toULongLong(&number);
    // The last digit may be given or left for the register to compute.
    return digits == 0 || (number && data.size() >= digits && data.size() <= digits + 2);
}

struct AgentRequisite
{
    QString tag;
    qsizetype longest;
};

void addRequisite(QJsonObject& object, const QString& key, const QString& value)
{
    if (!value.isEmpty())
        object[key] = value;
}

} // namespace

HexAnswer openDocument(Register& device, HexFields& fields)
{
    Document head;
    const int type = fields.number(0);
    head.cashier = {fields.text(2, longestAddress), fields.inn(3)};
    head.taxSystem = fields.number(5);
    head.customer = fields.text(6, longestAddress);
    const int mailOnly = fields.number(7);
    if (fields.isBad() || type < 1 || type > 5 || mailOnly < 0 || mailOnly > 1)
        return Refusal::BadValue;
    head.type = static_cast<DocumentType>(type);
    head.unprinted = mailOnly == 1;
    return device.documents().open(head);
}

HexAnswer printText(Register& device, HexFields& fields)
{
    const QString text = fields.text(0, longestLine);
    const int attribute = fields.number(1);
    if (fields.isBad() || attribute < 0 || attribute > 255)
        return Refusal::BadValue;
    return device.documents().printText(text, attribute);
}

HexAnswer finishDocument(Register& device, HexFields&)
{
    return device.documents().finish();
}

HexAnswer cancelDocument(Register& device, HexFields&)
{
    return device.documents().cancel();
}

HexAnswer printBarcode(Register& device, HexFields& fields)
{
    const int textPosition = fields.number(0);
    const int moduleWidth = fields.number(1);
    const int height = fields.number(2);
    const int kind = fields.number(3);
    const QString data = fields.text(4, longestLine);
    if (fields.isBad() || textPosition < 0 || textPosition > 3 || moduleWidth < 0 || height < 0
        || height > 255 || kind < 0 || kind >= barcodeKinds || !fitsBarcode(kind, data))
        return Refusal::BadValue;
    return device.documents().printPicture(QLatin1String(barcodeNames[kind]), data);
}

HexAnswer printQrCode(Register& device, HexFields& fields)
{
    const QString data = fields.text(2, longestLine);
    if (fields.number(0) < 0 || fields.number(1) < 0 || fields.isBad() || data.isEmpty())
        return Refusal::BadValue;
    return device.documents().printPicture(QStringLiteral("QR"), data);
}

HexAnswer addItem(Register& device, HexFields& fields)
{
    Item item;
    item.name = fields.text(0, longestItemName);
    item.barcode = fields.utf8(1, 13);
    item.quantity = fields.decimal(2, quantityDecimals);
    item.price = fields.decimal(3, moneyDecimals);
    item.tax = fields.number(5);
    item.paymentMethod = fields.number(7, 4);
    item.country = fields.utf8(10, 3);
    item.declaration = fields.utf8(11, 32);
    item.paymentObject = fields.number(12, 1);
    item.unit = fields.number(13);
    item.markingStatus = fields.number(15, -1);
    addRequisite(item.industry, tag::industryAuthority, fields.utf8(16, 3));
    if (!fields.isEmpty(17))
        addRequisite(
            item.industry, tag::industryDate, fields.date(17).toString(QStringLiteral("dd.MM.yyyy")));
    addRequisite(item.industry, tag::industryNumber, fields.utf8(18, 32));
    addRequisite(item.industry, tag::industryValue, fields.utf8(19, 256));
    return fields.isBad() ? Refusal::BadValue : device.receipts().addItem(item);
}

HexAnswer subtotal(Register& device, HexFields&)
{
    return device.receipts().subtotal();
}

HexAnswer pay(Register& device, HexFields& fields)
{
    const int kind = fields.number(0);
    const Money sum = fields.decimal(1, moneyDecimals);
    return fields.isBad() ? Refusal::BadValue : device.receipts().pay(kind, sum);
}

HexAnswer setMoney(Register& device, HexFields& fields)
{
    const Money sum = fields.decimal(1, moneyDecimals);
    return fields.isBad() ? Refusal::BadValue : device.cash().setSum(sum);
}

HexAnswer bindAgent(Register& device, HexFields& fields)
{
    constexpr int allAgents = 127;
    QJsonObject agent;
    if (!fields.isEmpty(0)) {
        const int kinds = fields.number(0);
        if (kinds < 0 || kinds > allAgents)
            return Refusal::BadValue;
        agent[tag::agentKinds] = kinds;
    }
    // Fields 2 to 11: operation, phones, name, address and INN of the agent, then phone, name and INN of the
    // supplier.
    static const AgentRequisite requisites[] = {{tag::agentOperation, 24}, {tag::agentPhone, 19},
        {tag::transferName, 64}, {tag::transferAddress, 256}, {tag::transferPhone, 19},
        {tag::transferInn, 12}, {tag::paymentOperatorPhone, 19}, {tag::supplierPhone, 19},
        {tag::supplierName, 256}, {tag::supplierInn, 12}};
    qsizetype index = 1;
    for (const AgentRequisite& requisite : requisites)
        addRequisite(agent, requisite.tag, fields.utf8(index++, requisite.longest));
    fields.inn(6);
    fields.inn(10);
    return fields.isBad() ? Refusal::BadValue : device.receipts().bindAgent(agent);
}

HexAnswer checkMarking(Register& device, HexFields& fields)
{
    MarkingQuery query;
    query.plannedStatus = fields.number(1);
    query.quantity = fields.real(2);
    // The measure unit has to be a number; the check does not look at it.
    fields.number(3);
    const QByteArray digits = fields.raw(6);
    query.code = QByteArray::fromHex(digits);
    // Letters that are no digits are passed over by the conversion, so it must come out the same again.
    const bool hexadecimal = query.code.toHex() == digits.toLower();
    if (fields.isBad() || !hexadecimal)
        return Refusal::BadValue;
    int result = 0;
    const Refusal refusal = device.marking().check(query, result);
    if (refusal != Refusal::None)
        return refusal;
    return QList<QByteArray>{QByteArray::number(result)};
}

HexAnswer clearMarking(Register& device, HexFields&)
{
    return device.marking().clear();
}

HexAnswer bindMarking(Register& device, HexFields& fields)
{
    // The check had the code in the register's code page, this command has it as plain text.
    return device.marking().bind(codepage::fromText(QString::fromUtf8(fields.raw(0))));
}

} // namespace emulator::hexcommands
