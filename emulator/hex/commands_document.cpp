#include "hex/protocol.h"

#include "hex/codepage.h"

namespace emulator {

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

void addText(QJsonObject& object, const QString& key, const QString& value)
{
    if (!value.isEmpty())
        object[key] = value;
}

} // namespace

HexProtocol::Answer HexProtocol::openDocument(HexFields& fields)
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
    return device().openDocument(head);
}

HexProtocol::Answer HexProtocol::printText(HexFields& fields)
{
    const QString text = fields.text(0, longestLine);
    const int attribute = fields.number(1);
    if (fields.isBad() || attribute < 0 || attribute > 255)
        return Refusal::BadValue;
    return device().printText(text, attribute);
}

HexProtocol::Answer HexProtocol::finishDocument(HexFields&)
{
    return device().finishDocument();
}

HexProtocol::Answer HexProtocol::cancelDocument(HexFields&)
{
    return device().cancelDocument();
}

HexProtocol::Answer HexProtocol::printBarcode(HexFields& fields)
{
    const int textPosition = fields.number(0);
    const int moduleWidth = fields.number(1);
    const int height = fields.number(2);
    const int kind = fields.number(3);
    const QString data = fields.text(4, longestLine);
    if (fields.isBad() || textPosition < 0 || textPosition > 3 || moduleWidth < 0 || height < 0
        || height > 255 || kind < 0 || kind >= barcodeKinds || !fitsBarcode(kind, data))
        return Refusal::BadValue;
    return device().printPicture(QLatin1String(barcodeNames[kind]), data);
}

HexProtocol::Answer HexProtocol::printQrCode(HexFields& fields)
{
    const QString data = fields.text(2, longestLine);
    if (fields.number(0) < 0 || fields.number(1) < 0 || fields.isBad() || data.isEmpty())
        return Refusal::BadValue;
    return device().printPicture(QStringLiteral("QR"), data);
}

HexProtocol::Answer HexProtocol::addItem(HexFields& fields)
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
    addText(item.industry, QStringLiteral("1262"), fields.utf8(16, 3));
    if (!fields.isEmpty(17))
        addText(
            item.industry, QStringLiteral("1263"), fields.date(17).toString(QStringLiteral("dd.MM.yyyy")));
    addText(item.industry, QStringLiteral("1264"), fields.utf8(18, 32));
    addText(item.industry, QStringLiteral("1265"), fields.utf8(19, 256));
    return fields.isBad() ? Refusal::BadValue : device().addItem(item);
}

HexProtocol::Answer HexProtocol::subtotal(HexFields&)
{
    return device().subtotal();
}

HexProtocol::Answer HexProtocol::pay(HexFields& fields)
{
    const int kind = fields.number(0);
    const Money sum = fields.decimal(1, moneyDecimals);
    return fields.isBad() ? Refusal::BadValue : device().pay(kind, sum);
}

HexProtocol::Answer HexProtocol::setMoney(HexFields& fields)
{
    const Money sum = fields.decimal(1, moneyDecimals);
    return fields.isBad() ? Refusal::BadValue : device().setMoney(sum);
}

HexProtocol::Answer HexProtocol::bindAgent(HexFields& fields)
{
    constexpr int allAgents = 127;
    QJsonObject agent;
    if (!fields.isEmpty(0)) {
        const int kinds = fields.number(0);
        if (kinds < 0 || kinds > allAgents)
            return Refusal::BadValue;
        agent[QStringLiteral("1222")] = kinds;
    }
    struct Requisite
    {
        int tag;
        qsizetype longest;
    };
    // Fields 2 to 11: operation, phones, name, address and INN of the agent, then phone, name and INN of the
    // supplier.
    constexpr Requisite requisites[] = {{1044, 24}, {1073, 19}, {1026, 64}, {1005, 256}, {1075, 19},
        {1016, 12}, {1074, 19}, {1171, 19}, {1225, 256}, {1226, 12}};
    qsizetype index = 1;
    for (const Requisite& requisite : requisites)
        addText(agent, QString::number(requisite.tag), fields.utf8(index++, requisite.longest));
    fields.inn(6);
    fields.inn(10);
    return fields.isBad() ? Refusal::BadValue : device().bindAgent(agent);
}

HexProtocol::Answer HexProtocol::checkMarking(HexFields& fields)
{
    MarkingQuery query;
    query.plannedStatus = fields.number(1);
    query.quantity = fields.real(2);
    query.unit = fields.number(3);
    const QByteArray digits = fields.raw(6);
    query.code = QByteArray::fromHex(digits);
    // Letters that are no digits are passed over by the conversion, so it must come out the same again.
    const bool hexadecimal = query.code.toHex() == digits.toLower();
    if (fields.isBad() || !hexadecimal)
        return Refusal::BadValue;
    int result = 0;
    const Refusal refusal = device().checkMarking(query, result);
    if (refusal != Refusal::None)
        return refusal;
    return QList<QByteArray>{QByteArray::number(result)};
}

HexProtocol::Answer HexProtocol::clearMarking(HexFields&)
{
    return device().clearMarking();
}

HexProtocol::Answer HexProtocol::bindMarking(HexFields& fields)
{
    // The check had the code in the register's code page, this command has it as plain text.
    return device().bindMarking(codepage::fromText(QString::fromUtf8(fields.raw(0))));
}

} // namespace emulator
