#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace frctl {

struct Options;

/// A receipt as it stands in a file, or why there is none.
struct ReceiptText
{
    QString file;
    /// Of a file with a receipt a line, from 1; 0 for a file that is one receipt.
    int line = 0;
    QByteArray text = {};
    /// Empty for one that can be read.
    QString fault = {};
};

/// The receipts of a file, "-" is standard input: one, or one a line. A file that cannot be used gives one
/// with a fault. Lines are told by the name (.jsonl, .ndjson), or by being JSON each where the whole is none.
QList<ReceiptText> receiptTexts(const QString& fileName);
/// The file of a command that takes one receipt. Throws UsageError when it cannot be read, or has several.
QByteArray oneReceipt(const Options& options);

} // namespace frctl
