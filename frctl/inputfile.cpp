#include "inputfile.h"

#include "errors.h"
#include "frctltr.h"
#include "textencoding.h"

#include <QFile>

#include <cstdio>
#include <optional>

namespace frctl {

namespace {

constexpr qsizetype mebibyte = 1024LL * 1024;
constexpr qsizetype portionSize = 64LL * 1024;

/// Throws UsageError without the name of the file, also for one that is larger; reading ends soon behind
/// that.
QByteArray readUpTo(const QString& fileName, qsizetype largestMebibytes)
{
    const qsizetype largest = largestMebibytes * mebibyte;
    QFile file(fileName);
    const bool isOpen = fileName == QStringLiteral("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                        : file.open(QIODevice::ReadOnly);
    QByteArray bytes;
    // A pipe gives what it has at the moment.
    for (QByteArray portion; isOpen && bytes.size() <= largest; bytes += portion) {
        portion = file.read(portionSize);
        if (portion.isEmpty())
            break;
    }
    if (file.error() != QFileDevice::NoError)
        throw UsageError(file.errorString());
    if (bytes.size() > largest)
        throw UsageError(tr("has more than %1 MiB").arg(largestMebibytes));
    return bytes;
}

} // namespace

QByteArray readFile(const QString& fileName, qsizetype largestMebibytes)
{
    try {
        return readUpTo(fileName, largestMebibytes);
    } catch (const UsageError& error) {
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, QString::fromUtf8(error.what())));
    }
}

QByteArray readReceipts(const QString& fileName)
{
    return readUpTo(fileName, largestFileMebibytes);
}

QStringList readLines(const QString& fileName)
{
    const QByteArray bytes = readFile(fileName);
    if (const std::optional<QString> fault = receipt::utf8Fault(bytes))
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, *fault));
    QString text = QString::fromUtf8(receipt::withoutByteOrderMark(bytes));
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

} // namespace frctl
