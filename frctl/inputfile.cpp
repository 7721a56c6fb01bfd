#include "inputfile.h"

#include "errors.h"

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
    QString text = QString::fromUtf8(readFile(fileName));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.split(QLatin1Char('\n'));
}

} // namespace frctl
