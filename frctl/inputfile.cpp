#include "inputfile.h"

#include "errors.h"
#include "frctltr.h"
#include "textencoding.h"

#include <QFile>

#include <cstdio>
#include <limits>
#include <optional>

namespace frctl {

namespace {

constexpr qsizetype largestReceipts = 64LL * 1024 * 1024;
constexpr qsizetype portionSize = 64LL * 1024;

/// Throws UsageError without the name of the file. Reading ends soon behind the largest size.
QByteArray readUpTo(const QString& fileName, qsizetype largest)
{
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
    return bytes;
}

} // namespace

QByteArray readFile(const QString& fileName)
{
    try {
        return readUpTo(fileName, std::numeric_limits<qsizetype>::max());
    } catch (const UsageError& error) {
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, QString::fromUtf8(error.what())));
    }
}

QByteArray readReceipts(const QString& fileName)
{
    const QByteArray bytes = readUpTo(fileName, largestReceipts);
    if (bytes.size() > largestReceipts)
        throw UsageError(tr("has more than %1 MiB").arg(largestReceipts / 1024 / 1024));
    return bytes;
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
