#include "receipttexts.h"

#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "options.h"
#include "textencoding.h"

#include <QJsonDocument>

#include <algorithm>

namespace frctl {

namespace {

bool isJson(const QByteArray& text)
{
    return !QJsonDocument::fromJson(text).isNull();
}

QList<ReceiptText> receiptLines(const QString& fileName, const QByteArray& text)
{
    QList<ReceiptText> receipts;
    int line = 0;
    for (const QByteArray& bytes : text.split('\n')) {
        ++line;
        if (!bytes.trimmed().isEmpty())
            receipts.append({fileName, line, bytes.trimmed()});
    }
    return receipts;
}

/// A broken line or two among many make no single receipt of them. The lines of a receipt that is broken
/// itself are no receipts.
bool areReceipts(const QList<ReceiptText>& lines)
{
    const auto whole = std::count_if(
        lines.cbegin(), lines.cend(), [](const ReceiptText& receipt) { return isJson(receipt.text); });
    return lines.size() > 1 && whole * 2 >= lines.size();
}

bool isNamedForLines(const QString& fileName)
{
    return fileName.endsWith(QStringLiteral(".jsonl")) || fileName.endsWith(QStringLiteral(".ndjson"));
}

QList<ReceiptText> receiptsOf(const QString& fileName, const QByteArray& bytes)
{
    const QByteArray text = receipt::withoutByteOrderMark(bytes);
    if (text.trimmed().isEmpty())
        return {{fileName, 0, {}, tr("is empty")}};
    if (isNamedForLines(fileName))
        return receiptLines(fileName, text);
    if (isJson(text))
        return {{fileName, 0, bytes}};
    const QList<ReceiptText> receipts = receiptLines(fileName, text);
    return areReceipts(receipts) ? receipts : QList<ReceiptText>{{fileName, 0, bytes}};
}

} // namespace

QList<ReceiptText> receiptTexts(const QString& fileName)
{
    try {
        return receiptsOf(fileName, readReceipts(fileName));
    } catch (const UsageError& error) {
        return {{fileName, 0, {}, QString::fromUtf8(error.what())}};
    }
}

QByteArray oneReceipt(const Options& options)
{
    const QString fileName = options.arguments.constFirst();
    QByteArray bytes = readFile(fileName);
    const QByteArray text = receipt::withoutByteOrderMark(bytes);
    if (!isJson(text) && areReceipts(receiptLines(fileName, text)))
        throw UsageError(
            tr("%1: has several receipts, one a line; %2 takes one, frctl check as many as there are")
                .arg(fileName, options.command));
    return bytes;
}

} // namespace frctl
