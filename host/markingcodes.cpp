#include "frutils.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <optional>
#include <utility>

// Codes of marked goods. A GS1 code starts with "01", a GTIN of 14 digits, "21" and a serial number; the
// fields behind it, with which the authenticity is checked, start with an identifier of their own and are set
// apart by 0x1D. Scanners that work as a keyboard lose that character.
//
// A serial number may hold any characters, "91" and "93" too, so the fields cannot be found by a search from
// the left. But each group of goods has one fixed layout, and no two layouts are of the same length: the
// length names the only layout that can fit, and its identifiers must then stand where they belong.

namespace {

constexpr QChar groupSeparator{0x1D};
constexpr qsizetype gtinLength = 14;
constexpr qsizetype serialStart = 2 + gtinLength + 2;
constexpr qsizetype maxSerialLength = 20;

struct Field
{
    QStringView identifier;
    qsizetype length;
};

constexpr Field verificationKey{u"91", 4};
constexpr Field signature{u"92", 44};
constexpr Field longSignature{u"92", 88};
constexpr Field checkCode{u"93", 4};
constexpr Field retailPrice{u"8005", 6};
constexpr Field netWeight{u"3103", 6};

struct Layout
{
    qsizetype serialLength;
    std::array<Field, 2> fields;
    qsizetype fieldCount;

    constexpr qsizetype length() const
    {
        qsizetype result = serialStart + serialLength;
        for (qsizetype index = 0; index < fieldCount; ++index)
            result += fields[static_cast<std::size_t>(index)].identifier.size()
                + fields[static_cast<std::size_t>(index)].length;
        return result;
    }
};

constexpr Layout layout(qsizetype serialLength, const Field& only)
{
    return {serialLength, {only, Field{}}, 1};
}

constexpr Layout layout(qsizetype serialLength, const Field& first, const Field& second)
{
    return {serialLength, {first, second}, 2};
}

constexpr std::array layouts{
    // Shoes, clothes, perfume, tyres, medicines
    layout(13, verificationKey, signature),
    layout(13, verificationKey, longSignature),
    // Photo cameras and flash lamps
    layout(20, verificationKey, signature),
    layout(20, verificationKey, longSignature),
    // Dairy products; the same by weight
    layout(6, checkCode),
    layout(6, checkCode, netWeight),
    // Beer. A bare serial number of 13 characters with "93" as its eighth and ninth looks the same; goods are
    // sold by their full code, so the layout with the check code is taken.
    layout(7, checkCode),
    // Dairy products of the first series
    layout(8, checkCode),
    // Water, soft drinks, food supplements, antiseptics
    layout(13, checkCode),
    layout(20, checkCode),
    // Tobacco by the block
    layout(7, retailPrice, checkCode),
};

bool isDigits(QStringView text)
{
    return std::all_of(text.cbegin(), text.cend(),
        [](QChar character) { return character >= QLatin1Char('0') && character <= QLatin1Char('9'); });
}

bool isGs1(QStringView code)
{
    return code.size() > serialStart && code.startsWith(u"01") && isDigits(code.mid(2, gtinLength))
        && code.mid(2 + gtinLength).startsWith(u"21");
}

/// The code with its separators; nothing when it is not of that layout.
std::optional<QString> separated(const QString& code, const Layout& layout)
{
    if (code.length() != layout.length())
        return {};
    qsizetype position = serialStart + layout.serialLength;
    QString result = code.left(position);
    for (qsizetype index = 0; index < layout.fieldCount; ++index) {
        const Field& field = layout.fields[static_cast<std::size_t>(index)];
        if (!QStringView(code).mid(position).startsWith(field.identifier))
            return {};
        const qsizetype size = field.identifier.size() + field.length;
        result += groupSeparator + code.mid(position, size);
        position += size;
    }
    return result;
}

using ProductCode = std::pair<EFrDriver::RequisiteTypes, QString>;

/// GTIN and serial number of a GS1 code: of marked goods when verification fields follow.
std::optional<ProductCode> gs1Code(const QString& code)
{
    // Scanners may give the FNC1 at the start as a separator, too.
    const QString plain = code.startsWith(groupSeparator) ? code.mid(1) : code;
    if (!isGs1(plain))
        return {};
    QStringList fields = FrUtils::getMarkingCodeWithSeparators(plain).split(groupSeparator);
    const QString identity = fields.takeFirst();
    if (identity.length() <= serialStart || identity.length() > serialStart + maxSerialLength)
        return {};
    const bool isVerifiable = std::any_of(fields.cbegin(), fields.cend(), [](const QString& field) {
        return field.startsWith(u"91") || field.startsWith(u"92") || field.startsWith(u"93");
    });
    return ProductCode{isVerifiable ? EFrDriver::ProductCodeGs1M : EFrDriver::ProductCodeGs1, identity};
}

/// The short code on a pack of tobacco: GTIN, serial number of 7 characters, price and check code of 4 each.
std::optional<ProductCode> shortCode(const QString& code)
{
    if (code.length() != gtinLength + 7 + 4 + 4 || !isDigits(QStringView(code).left(gtinLength)))
        return {};
    return ProductCode{EFrDriver::ProductCodeShort, code.left(gtinLength + 7)};
}

/// Stamps on alcohol: 68 characters of the second series, 150 of the third.
std::optional<ProductCode> exciseStamp(const QString& code, ExciseMarkType type)
{
    const bool looksLikeStamp = std::all_of(code.cbegin(), code.cend(), [](QChar character) {
        return (character >= QLatin1Char('0') && character <= QLatin1Char('9'))
            || (character >= QLatin1Char('A') && character <= QLatin1Char('Z'));
    });
    if (type != MarkAlcohol && !looksLikeStamp)
        return {};
    if (code.length() == 68)
        return ProductCode{EFrDriver::ProductCodeExcise20, code.mid(7, 23)};
    if (code.length() == 150)
        return ProductCode{EFrDriver::ProductCodeExcise30, code.left(14)};
    return {};
}

/// The control mark of a fur product: RU-401301-AAA0277031.
std::optional<ProductCode> furMark(const QString& code, ExciseMarkType type)
{
    if (code.length() != 20)
        return {};
    const bool looksLikeMark = code.at(0).isUpper() && code.at(1).isUpper() && code.at(2) == QLatin1Char('-')
        && isDigits(QStringView(code).mid(3, 6)) && code.at(9) == QLatin1Char('-');
    if (type != MarkFur && !looksLikeMark)
        return {};
    return ProductCode{EFrDriver::ProductCodeFur, code};
}

std::optional<ProductCode> tradeNumber(const QString& code)
{
    if (!isDigits(code))
        return {};
    switch (code.length()) {
    case 8:
        return ProductCode{EFrDriver::ProductCodeEan8, code};
    case 13:
        return ProductCode{EFrDriver::ProductCodeEan13, code};
    case 14:
        return ProductCode{EFrDriver::ProductCodeItf14, code};
    default:
        return {};
    }
}

ProductCode productCode(const QString& code, ExciseMarkType type)
{
    // A pack of tobacco whose GTIN starts with 01 can look like a GS1 code.
    if (type == MarkTobacco) {
        if (const auto found = shortCode(code))
            return *found;
    }
    for (const auto& found :
        {tradeNumber(code), gs1Code(code), exciseStamp(code, type), furMark(code, type), shortCode(code)}) {
        if (found)
            return *found;
    }
    constexpr qsizetype maxUnknownLength = 32;
    return {EFrDriver::ProductCodeUnknown, code.left(maxUnknownLength)};
}

} // namespace

QString FrUtils::getMarkingCodeWithSeparators(const QString& code)
{
    if (code.contains(groupSeparator) || !isGs1(code))
        return code;
    for (const Layout& layout : layouts) {
        if (const auto result = separated(code, layout))
            return *result;
    }
    return code;
}

FdRequisite FrUtils::createNomenclatureCodeRequisiteFFD12(const QString& code, ExciseMarkType type)
{
    const auto [tag, text] = productCode(code, type);
    return FdRequisite(tag, to866(text));
}
