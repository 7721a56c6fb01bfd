#include "fieldtable.h"

#include "receipttr.h"

#include <QHash>

#include <barcode.h>

namespace receipt {

namespace {

constexpr FieldCarriage notCarried{FieldCarriage::NotCarried};
constexpr FieldCarriage asValue{FieldCarriage::Value};
constexpr FieldCarriage unlessQr{FieldCarriage::Value, 0, FieldCarriage::QrCode};
// No font over XML is both wide and high.
constexpr FieldCarriage unlessWide{FieldCarriage::Value, 0, FieldCarriage::DoubleWidth};

constexpr FieldCarriage asUtf8(int limit)
{
    return {FieldCarriage::Utf8, limit};
}

constexpr FieldCarriage asCp866(int limit)
{
    return {FieldCarriage::Cp866, limit};
}

constexpr FieldCarriage asExactCp866(int limit)
{
    return {FieldCarriage::ExactCp866, limit};
}

// Over XML a receipt is a document and carries nearly all; over HEX the commands have a place for some
// requisites only, and the driver logs the others. An amount is not sent on either, but checked and computed
// by the register as well; over HEX a discount is sent within the price, and the group of marked goods only
// says what they are when the receipt does not (paymentObject).
constexpr FieldRule fieldTable[] = {
    {"type", asValue, asValue},
    {"taxationType", asValue, asValue},
    {"electronically", asValue, asValue},
    {"operator.name", asUtf8(64), asCp866(64)},
    {"operator.vatin", asUtf8(12), asUtf8(12)},
    {"clientInfo.emailOrPhone", asUtf8(64), asCp866(64)},
    {"clientInfo.name", asUtf8(256), notCarried},
    {"clientInfo.vatin", asUtf8(12), notCarried},
    {"paymentsPlace", asUtf8(256), notCarried},
    {"additionalAttribute", asUtf8(16), notCarried},

    {"items[].type", asValue, asValue},
    {"items[].name", asUtf8(128), asCp866(48)},
    {"items[].price", asValue, asValue},
    {"items[].quantity", asValue, asValue},
    {"items[].infoDiscountAmount", asValue, asValue},
    {"items[].amount", asValue, asValue},
    {"items[].split", asValue, asValue},
    {"items[].tax.type", asValue, asValue},
    {"items[].paymentMethod", asValue, asValue},
    {"items[].paymentObject", asValue, asValue},
    {"items[].measurementUnit", asValue, asValue},
    {"items[].markingCode", asUtf8(512), asUtf8(512)},
    {"items[].markingCode.mark", asUtf8(512), asUtf8(512)},
    {"items[].markingCode.type", asValue, asValue},
    {"items[].countryCode", asUtf8(3), asUtf8(3)},
    {"items[].customsDeclaration", asUtf8(32), asUtf8(32)},
    {"items[].agentInfo.agents", asValue, asValue},
    {"items[].agentInfo.payingAgent.operation", asUtf8(24), asUtf8(24)},
    {"items[].agentInfo.payingAgent.phones", asUtf8(19), asUtf8(19)},
    {"items[].agentInfo.receivePaymentsOperator.phones", asUtf8(19), asUtf8(19)},
    {"items[].agentInfo.moneyTransferOperator.name", asUtf8(64), asUtf8(64)},
    {"items[].agentInfo.moneyTransferOperator.address", asUtf8(256), asUtf8(256)},
    {"items[].agentInfo.moneyTransferOperator.phones", asUtf8(19), asUtf8(19)},
    {"items[].agentInfo.moneyTransferOperator.vatin", asUtf8(12), asUtf8(12)},
    {"items[].supplierInfo.name", asUtf8(256), asUtf8(19)},
    {"items[].supplierInfo.phones", asUtf8(19), asUtf8(19)},
    {"items[].supplierInfo.vatin", asUtf8(12), asUtf8(12)},
    {"items[].industryInfo.fois", asUtf8(3), asUtf8(3)},
    {"items[].industryInfo.date", asUtf8(10), asUtf8(10)},
    {"items[].industryInfo.number", asUtf8(32), asUtf8(32)},
    {"items[].industryInfo.industryAttribute", asUtf8(256), asUtf8(256)},

    {"items[].text", asUtf8(256), asCp866(256)},
    {"items[].doubleWidth", asValue, asValue},
    {"items[].doubleHeight", unlessWide, asValue},
    {"items[].barcode", asUtf8(256), asExactCp866(256)},
    {"items[].barcodeType", asValue, asValue},
    {"items[].scale", notCarried, asValue},
    {"items[].height", notCarried, unlessQr},
    {"items[].printText", notCarried, unlessQr},

    {"payments[].type", asValue, asValue},
    {"payments[].sum", asValue, asValue},
};

/// "items[2].price" as "items[].price".
QString withoutPlaces(const QString& path)
{
    QString plain;
    bool isPlace = false;
    for (const QChar character : path) {
        isPlace = isPlace && character.isDigit();
        if (!isPlace)
            plain += character;
        isPlace = isPlace || character == QLatin1Char('[');
    }
    return plain;
}

} // namespace

QString FieldCarriage::text() const
{
    switch (form) {
    case NotCarried:
        return tr("no");
    case Value:
        return obstacle == QrCode     ? tr("yes, not of a QR code")
            : obstacle == DoubleWidth ? tr("yes, not with doubleWidth")
                                      : tr("yes");
    case Cp866:
    case ExactCp866:
        return QStringLiteral("CP866, %1").arg(limit);
    case Utf8:
        break;
    }
    return QStringLiteral("UTF-8, %1").arg(limit);
}

std::span<const FieldRule> fieldRules()
{
    return fieldTable;
}

const FieldRule* fieldRule(const QString& path)
{
    static const QHash<QString, const FieldRule*> rules = [] {
        QHash<QString, const FieldRule*> table;
        for (const FieldRule& rule : fieldTable)
            table.insert(QLatin1String(rule.path), &rule);
        return table;
    }();
    return rules.value(withoutPlaces(path));
}

bool isBarcodePrinted(int type, Protocol protocol)
{
    if (protocol == Protocol::Xml)
        return type == Barcode::Ean13 || type == Barcode::Qr;
    // The number of PDF417 is that of CODE 93 on the register, and what follows CODE 128 is unknown to it.
    return type >= Barcode::UpcA && type <= Barcode::Code128 && type != Barcode::Pdf417;
}

} // namespace receipt
