#include "inputfile.h"

#include "controlcharacters.h"
#include "errors.h"

#include <QFile>

#include <algorithm>

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
    const QStringList lines = text.split(QLatin1Char('\n'));
    const auto wrong = std::find_if(lines.cbegin(), lines.cend(), receipt::hasControlCharacters);
    if (wrong != lines.cend())
        throw UsageError(QStringLiteral("%1: line %2 holds control characters")
                             .arg(fileName)
                             .arg(wrong - lines.cbegin() + 1));
    return lines;
}

} // namespace frctl
