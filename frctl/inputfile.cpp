#include "inputfile.h"

#include "errors.h"
#include "textencoding.h"

#include <QFile>

namespace frctl {

QByteArray readFile(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        throw UsageError(QStringLiteral("%1: %2").arg(fileName, file.errorString()));
    return file.readAll();
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
