#include "hex/commands.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>

namespace emulator::hexcommands {

namespace {

constexpr qsizetype longestLine = 256;
constexpr qsizetype longestCashier = 64;
constexpr qsizetype longestAddress = 256;
// Hosts do not cut the text of a barcode.
constexpr qsizetype longestBarcode = std::numeric_limits<qsizetype>::max();
constexpr int anyNumber = std::numeric_limits<int>::max();
constexpr int firstFurtherKind = 11;
/// Usual, small, high, wide, high and wide, and inverted letters: what hosts have fonts for.
constexpr int lineAttributesOfHosts[] = {0, 1, 16, 32, 16 | 32, 128};

struct BarcodeKind
{
    tape::Symbology symbology;
    /// Digits that a code must have at least and at most, 0 for any text. The last one may be given or left
    /// for the register to compute.
    int least;
    int most;
};

// Hosts send PDF417 with the number of CODE 93, 7: it cannot be told from it.
constexpr BarcodeKind barcodeKinds[]
    = {{tape::Symbology::UpcA, 11, 12}, {tape::Symbology::UpcE, 6, 8}, {tape::Symbology::Ean13, 12, 13},
        {tape::Symbology::Ean8, 7, 8}, {tape::Symbology::Code39, 0, 0}, {tape::Symbology::Itf, 0, 0},
        {tape::Symbology::Codabar, 0, 0}, {tape::Symbology::Code93, 0, 0}, {tape::Symbology::Code128, 0, 0}};

// Nothing for the two numbers that no kind has. Behind them come kinds of which only the number is known.
std::optional<BarcodeKind> barcodeKind(int number)
{
    if (number >= firstFurtherKind)
        return BarcodeKind{tape::Symbology::Other, 0, 0};
    const bool known = number >= 0 && number < static_cast<int>(std::size(barcodeKinds));
    return known ? std::optional<BarcodeKind>(barcodeKinds[number]) : std::nullopt;
}

bool fitsBarcode(const BarcodeKind& kind, const QString& data, bool strict)
{
    if (kind.least == 0)
        return true;
    const bool digits = std::all_of(
        data.cbegin(), data.cend(), [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
    const int most = strict ? kind.most : kind.least + 2;
    return digits && data.size() >= kind.least && data.size() <= most;
}

bool isOfHosts(int attribute)
{
    const auto* const end = std::end(lineAttributesOfHosts);
    return std::find(std::begin(lineAttributesOfHosts), end, attribute) != end;
}

bool hasControlCharacter(const QString& text)
{
    constexpr char16_t firstPrinted = 0x20;
    constexpr char16_t deleted = 0x7F;
    return std::any_of(text.cbegin(), text.cend(),
        [](QChar letter) { return letter < QChar(firstPrinted) || letter == QChar(deleted); });
}

} // namespace

HexAnswer openDocument(Register& device, HexFields& fields)
{
    Document head;
    const int type = fields.numberWithin(0, 1, 5);
    head.cashier = {fields.text(2, longestCashier), fields.inn(3)};
    head.taxSystem = fields.number(5);
    head.customer = fields.text(6, longestAddress);
    const int mailOnly = fields.numberWithin(7, 0, 1);
    if (fields.isBad())
        return Refusal::BadValue;
    head.type = static_cast<DocumentType>(type);
    head.unprinted = mailOnly == 1;
    return device.documents().open(head);
}

HexAnswer printText(Register& device, HexFields& fields)
{
    const QString text = fields.text(0, longestLine);
    const int attribute = fields.numberWithin(1, 0, 255);
    if (fields.isBad())
        return Refusal::BadValue;
    if (fields.isStrict() && !isOfHosts(attribute))
        return {Refusal::BadValue,
            QStringLiteral("attribute %1 is none of 0, 1, 16, 32, 48 and 128").arg(attribute)};
    if (fields.isStrict() && hasControlCharacter(text))
        return {Refusal::BadValue, QStringLiteral("control characters in a line")};
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
    const int textPosition = fields.numberWithin(0, 0, 3);
    const int moduleWidth = fields.numberWithin(1, 0, anyNumber);
    const int height = fields.numberWithin(2, 0, 255);
    const int number = fields.number(3);
    const std::optional<BarcodeKind> kind = barcodeKind(number);
    const QString data = fields.text(4, longestBarcode);
    if (!kind)
        fields.reject(3, QStringLiteral("a kind of bar code: 0 to 8, 11 and above"));
    else if (!fitsBarcode(*kind, data, fields.isStrict()))
        fields.reject(
            4, QStringLiteral("from %1 to %2 digits with this kind").arg(kind->least).arg(kind->most));
    if (fields.isBad())
        return Refusal::BadValue;
    const int furtherNumber = kind->symbology == tape::Symbology::Other ? number : -1;
    return device.documents().printCode({kind->symbology, data, furtherNumber, moduleWidth, height,
        static_cast<tape::CodeCaption>(textPosition)});
}

HexAnswer printQrCode(Register& device, HexFields& fields)
{
    const QString data = fields.text(2, longestLine);
    const int moduleWidth = fields.numberWithin(0, 0, anyNumber);
    fields.numberWithin(1, 0, anyNumber);
    // A host that was given no text sends none, as with the other codes.
    if (data.isEmpty() && !fields.isStrict())
        fields.reject(2, QStringLiteral("a text"));
    if (fields.isBad())
        return Refusal::BadValue;
    return device.documents().printCode({tape::Symbology::Qr, data, -1, moduleWidth});
}

HexAnswer setMoney(Register& device, HexFields& fields)
{
    const Money sum = fields.money(1);
    if (fields.isBad())
        return Refusal::BadValue;
    return HexAnswer::judged(device.cash().setSum(sum), QStringLiteral("field 2 is a sum above 0.00"));
}

} // namespace emulator::hexcommands
