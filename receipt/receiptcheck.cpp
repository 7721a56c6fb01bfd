#include "receiptcheck.h"

#include "fieldsieve.h"
#include "fieldtable.h"
#include "jsontext.h"
#include "receiptnames.h"
#include "receiptparser.h"

#include <algorithm>

namespace receipt {

namespace {

QString nameOf(int barcodeType)
{
    for (const NamedValue& entry : names::barcodeTypes()) {
        if (entry.value == barcodeType)
            return QLatin1String(entry.name);
    }
    return {};
}

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
    const QString reason = QStringLiteral("is not printed over %1; what is: %2")
                               .arg(protocolName(protocol), printedBarcodes(protocol));
    for (const ReceiptItem& item : receipt.items) {
        if (item.kind == ReceiptItem::BarcodeItem && !isBarcodePrinted(item.barcode.type, protocol))
            findings.append({Finding::Error, item.path + QStringLiteral(".barcodeType"),
                nameOf(item.barcode.type), reason});
    }
}

/// Over XML fonts and barcodes travel within the text, so that a line can be taken for one of them.
void judgeLines(const Receipt& receipt, Protocol protocol, QList<Finding>& findings)
{
    const QString command = QStringLiteral("‼?");
    for (const ReceiptItem& item : receipt.items) {
        if (protocol == Protocol::Xml && item.text.startsWith(command))
            findings.append({Finding::Error, item.path + QStringLiteral(".text"), item.text,
                QStringLiteral("must not begin with %1, which is a command to the printer over XML")
                    .arg(command)});
    }
}

} // namespace

bool CheckedReceipt::hasErrors() const
{
    return std::any_of(findings.cbegin(), findings.cend(),
        [](const Finding& finding) { return finding.severity == Finding::Error; });
}

CheckedReceipt checkedReceipt(const QByteArray& text, const CheckOptions& options)
{
    const QJsonObject json = jsonFromText(text);
    // What is malformed is to be told as the file has it, and only a well-formed receipt can be sifted.
    receiptFromJson(json);
    CheckedReceipt checked;
    checked.receipt = receiptFromJson(carriedReceipt(json, options, checked.findings));
    judgeBarcodes(checked.receipt, options.protocol, checked.findings);
    judgeLines(checked.receipt, options.protocol, checked.findings);
    return checked;
}

} // namespace receipt
