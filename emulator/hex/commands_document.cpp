#include "hex/commands.h"

namespace emulator::hexcommands {

namespace {

constexpr qsizetype longestLine = 256;
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

HexAnswer setMoney(Register& device, HexFields& fields)
{
    const Money sum = fields.money(1);
    return fields.isBad() ? Refusal::BadValue : device.cash().setSum(sum);
}

} // namespace emulator::hexcommands
