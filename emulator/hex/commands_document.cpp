#include "hex/commands.h"

#include <iterator>
#include <optional>

namespace emulator::hexcommands {

namespace {

constexpr qsizetype longestLine = 256;
constexpr qsizetype longestCashier = 64;
constexpr qsizetype longestAddress = 256;
constexpr int firstFurtherKind = 11;

struct BarcodeKind
{
    const char* name;
    /// Digits that a code must have at least and at most, 0 for any text. The last one may be given or left
    /// for the register to compute.
    int least;
    int most;
};

constexpr BarcodeKind barcodeKinds[] = {{"UPC-A", 11, 12}, {"UPC-E", 6, 8}, {"EAN-13", 12, 13},
    {"EAN-8", 7, 8}, {"CODE39", 0, 0}, {"ITF", 0, 0}, {"CODABAR", 0, 0}, {"CODE93", 0, 0}, {"CODE128", 0, 0}};

// Nothing for the two numbers that no kind has. Behind them come kinds of which only the number is known.
std::optional<BarcodeKind> barcodeKind(int number)
{
    if (number >= firstFurtherKind)
        return BarcodeKind{"", 0, 0};
    const bool known = number >= 0 && number < static_cast<int>(std::size(barcodeKinds));
    return known ? std::optional<BarcodeKind>(barcodeKinds[number]) : std::nullopt;
}

bool fitsBarcode(const BarcodeKind& kind, const QString& data, bool strict)
{
    if (kind.least == 0)
        return !data.isEmpty();
    bool number = false;
    data.toULongLong(&number);
    const int most = strict ? kind.most : kind.least + 2;
    return number && data.size() >= kind.least && data.size() <= most;
}

QString barcodeTitle(int number)
{
    return number < firstFurtherKind ? QLatin1String(barcodeKinds[number].name)
                                     : QStringLiteral("ШТРИХКОД %1").arg(number);
}

} // namespace

HexAnswer openDocument(Register& device, HexFields& fields)
{
    Document head;
    const int type = fields.number(0);
    head.cashier = {fields.text(2, longestCashier), fields.inn(3)};
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
    const int number = fields.number(3);
    const std::optional<BarcodeKind> kind = barcodeKind(number);
    const QString data = fields.text(4, longestLine);
    if (fields.isBad() || textPosition < 0 || textPosition > 3 || moduleWidth < 0 || height < 0
        || height > 255 || !kind || !fitsBarcode(*kind, data, fields.isStrict()))
        return Refusal::BadValue;
    return device.documents().printPicture(barcodeTitle(number), data);
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
