#include "receiptcheck.h"

#include "fieldsieve.h"
#include "fieldtable.h"
#include "jsontext.h"
#include "plaintext.h"
#include "printertext.h"
#include "receipterror.h"
#include "receiptnames.h"
#include "receiptparser.h"
#include "receipttr.h"
#include "rules.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

#include <barcode.h>

namespace receipt {

namespace {

QString printedBarcodes(Protocol protocol)
{
    QStringList printed;
    for (const NamedValue& entry : names::barcodeTypes()) {
        if (isBarcodePrinted(entry.value, protocol))
            printed.append(QLatin1String(entry.name));
    }
    return printed.join(QStringLiteral(", "));
}

void judgeBarcodes(const Receipt& receipt, Protocol protocol, QList<Finding>& findings)
{
    const QString reason
        = tr("is not printed over %1; what is: %2").arg(protocolName(protocol), printedBarcodes(protocol));
    for (const ReceiptItem& item : receipt.items) {
        if (item.kind == ReceiptItem::BarcodeItem && !isBarcodePrinted(item.barcode.type, protocol))
            findings.append({Finding::Error, item.path + QStringLiteral(".barcodeType"),
                names::nameOf(names::barcodeTypes(), item.barcode.type), reason});
    }
}

struct BarcodeContent
{
    int type;
    const char* pattern;
    const char* allowed;
};

constexpr const char* ascii = "[\\x00-\\x7F]+";
constexpr const char* asciiWords = QT_TR_NOOP("Latin letters, digits and signs of ASCII");

// The last digit of a trade number may be left for the register to compute. No bars stand for other
// characters.
constexpr BarcodeContent barcodeContents[] = {
    {Barcode::UpcA, "[0-9]{11,12}", QT_TR_NOOP("11 or 12 digits")},
    {Barcode::UpcE, "[0-9]{6,8}", QT_TR_NOOP("6 to 8 digits")},
    {Barcode::Ean13, "[0-9]{12,13}", QT_TR_NOOP("12 or 13 digits")},
    {Barcode::Ean8, "[0-9]{7,8}", QT_TR_NOOP("7 or 8 digits")},
    {Barcode::Itf, "[0-9]+", QT_TR_NOOP("digits")},
    {Barcode::Codabar, "[0-9A-Da-d$:/.+-]+", QT_TR_NOOP("digits, A to D and $ : / . + -")},
    {Barcode::Code39, ascii, asciiWords},
    {Barcode::Code93, ascii, asciiWords},
    {Barcode::Code128, ascii, asciiWords},
};

/// The digits have the weights 3 and 1 in turn, the last one before the check digit 3.
int checkDigit(const QString& digits)
{
    int sum = 0;
    for (qsizetype place = digits.size() - 1, weight = 3; place >= 0; --place, weight = 4 - weight)
        sum += digits.at(place).digitValue() * static_cast<int>(weight);
    return (10 - sum % 10) % 10;
}

/// No scanner reads bars with a wrong one.
void judgeCheckDigit(const ReceiptItem& item, QList<Finding>& findings)
{
    const QMap<int, qsizetype> lengths{{Barcode::Ean8, 8}, {Barcode::Ean13, 13}, {Barcode::UpcA, 12}};
    const QString& text = item.barcode.text;
    if (lengths.value(item.barcode.type) != text.size())
        return;
    const int right = checkDigit(text.chopped(1));
    if (text.back().digitValue() != right)
        findings.append({Finding::Warning, item.path + QStringLiteral(".barcode"), text,
            tr("has a wrong check digit; the right one is %1").arg(right)});
}

/// What is no number of its type stops the receipt over HEX, and is another picture over XML.
void judgeContent(const ReceiptItem& item, QList<Finding>& findings)
{
    const auto content = std::find_if(std::begin(barcodeContents), std::end(barcodeContents),
        [&item](const BarcodeContent& entry) { return item.barcode.type == entry.type; });
    if (item.kind != ReceiptItem::BarcodeItem || content == std::end(barcodeContents))
        return;
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(QLatin1String(content->pattern)));
    if (pattern.match(item.barcode.text).hasMatch())
        return judgeCheckDigit(item, findings);
    findings.append({Finding::Error, item.path + QStringLiteral(".barcode"), item.barcode.text,
        tr("must be %1 in a barcode of type %2")
            .arg(tr(content->allowed), names::nameOf(names::barcodeTypes(), item.barcode.type))});
}

void judgeForXml(const ReceiptItem& item, QList<Finding>& findings)
{
    if (const auto fault = printerCommandFault(item.text))
        findings.append({Finding::Error, item.path + QStringLiteral(".text"), item.text, *fault});
    // No XML document can hold the group separators that a barcode may have over HEX.
    if (const auto fault = textFault(item.barcode.text))
        findings.append({Finding::Error, item.path + QStringLiteral(".barcode"), {},
            *fault + tr(", which XML cannot carry")});
}

/// A receipt as the protocol carries it.
struct Sifted
{
    CheckedReceipt checked;
    /// A text may come to nothing on the way to the printer.
    QList<ReceiptError> malformed;
};

Sifted siftedReceipt(const QJsonObject& json, const CheckOptions& options, bool isWhole)
{
    Sifted sifted;
    CheckedReceipt& checked = sifted.checked;
    const QJsonObject carried = carriedReceipt(json, options, checked.findings);
    checked.receipt = readReceipt(carried, options.split, sifted.malformed);
    judgeBarcodes(checked.receipt, options.protocol, checked.findings);
    for (const ReceiptItem& item : checked.receipt.items) {
        if (isBarcodePrinted(item.barcode.type, options.protocol))
            judgeContent(item, checked.findings);
        if (options.protocol == Protocol::Xml)
            judgeForXml(item, checked.findings);
    }
    judge(checked.receipt, options, checked.findings, isWhole && sifted.malformed.isEmpty());
    return sifted;
}

bool isBeneath(const QString& path, const QString& other)
{
    return path.startsWith(other + QLatin1Char('.')) || path.startsWith(other + QLatin1Char('['));
}

/// Whether the finding may come of what was not read. What is wrong with an array as a whole says nothing of
/// its elements.
bool hangsOn(const Finding& finding, const QString& malformed)
{
    return finding.path == malformed || isBeneath(malformed, finding.path)
        || finding.path.startsWith(malformed + QLatin1Char('.'));
}

/// What else is to be said of a malformed receipt.
QList<Finding> besides(const QList<ReceiptError>& malformed, const Sifted& sifted)
{
    QList<Finding> findings = sifted.checked.findings;
    for (const ReceiptError& error : sifted.malformed)
        findings += error.findings();
    findings.removeIf([&malformed](const Finding& finding) {
        return std::any_of(malformed.cbegin(), malformed.cend(),
            [&finding](const ReceiptError& error) { return hangsOn(finding, error.path()); });
    });
    return findings;
}

} // namespace

bool CheckedReceipt::hasErrors() const
{
    return std::any_of(findings.cbegin(), findings.cend(),
        [](const Finding& finding) { return finding.severity == Finding::Error; });
}

CheckedReceipt checkedReceipt(const QByteArray& text, const CheckOptions& options)
{
    // What is malformed is to be told as the file has it.
    QList<ReceiptError> malformed;
    const QJsonObject json = jsonFromText(text, malformed);
    readReceipt(json, options.split, malformed);
    if (malformed.size() >= mostErrors)
        throw ReceiptError(malformed);
    const Sifted sifted = siftedReceipt(json, options, malformed.isEmpty());
    if (!malformed.isEmpty())
        throw ReceiptError(malformed, besides(malformed, sifted));
    if (!sifted.malformed.isEmpty())
        throw ReceiptError(sifted.malformed, besides(sifted.malformed, sifted));
    return sifted.checked;
}

} // namespace receipt
