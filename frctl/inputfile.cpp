#include "inputfile.h"

#include "errors.h"
#include "textencoding.h"

#include <QFile>

#include <cstdio>

namespace frctl {

namespace {
constexpr qsizetype largestInput = 64LL * 1024 * 1024;
constexpr qsizetype portionSize = 64LL * 1024;
} // namespace

QByteArray readFile(const QString& fileName)
{
    QFile file(fileName);
    const bool isOpen = fileName == QStringLiteral("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                        : file.open(QIODevice::ReadOnly);
    if (!isOpen)
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
    return file.readAll();
}

QByteArray readInput(const QString& fileName)
{
    QFile file(fileName);
    const bool isOpen = fileName == QStringLiteral("-") ? file.open(stdin, QIODevice::ReadOnly)
                                                        : file.open(QIODevice::ReadOnly);
    QByteArray bytes;
    // A pipe gives what it has at the moment.
    for (QByteArray portion; isOpen && bytes.size() <= largestInput; bytes += portion) {
        portion = file.read(portionSize);
        if (portion.isEmpty())
            break;
    }
    if (file.error() != QFileDevice::NoError)
        throw UsageError(file.errorString());
    if (bytes.size() > largestInput)
        throw UsageError(QStringLiteral("has more than %1 MiB").arg(largestInput / 1024 / 1024));
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
