#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace frctl {

/// No file of receipts, texts or a picture is larger. What has no end, as a device, is known by it.
constexpr qsizetype largestFileMebibytes = 64;

/// The whole file; "-" is standard input. Throws UsageError when it cannot be read, or is larger.
QByteArray readFile(const QString& fileName, qsizetype largestMebibytes = largestFileMebibytes);
/// The whole of a file of receipts, "-" is standard input. Throws UsageError, whose text does not name the
/// file, also when it is larger than any such file.
QByteArray readReceipts(const QString& fileName);
/// The lines of a UTF-8 text, with or without a byte order mark, that end as on Unix or on Windows; the end
/// of the last one makes no line of its own. Throws UsageError, also for a text in another encoding.
QStringList readLines(const QString& fileName);

} // namespace frctl
