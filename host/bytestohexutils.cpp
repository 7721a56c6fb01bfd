#include "bytestohexutils.h"

#include <QStringList>

namespace bytestohexutils {

QString byteToHexStr(unsigned char byte, const QString& prefix)
{
    return prefix + QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0'));
}

QString bytesToHexStr(const QByteArray& bytes, const QString& prefix, const QString& separator)
{
    QStringList digits;
    digits.reserve(bytes.size());
    for (const char byte : bytes)
        digits.append(byteToHexStr(static_cast<unsigned char>(byte), prefix));
    return digits.join(separator);
}

QString bytesToHexWithSpacesStr(const QByteArray& bytes)
{
    return bytesToHexStr(bytes, QString(), QStringLiteral(" "));
}

} // namespace bytestohexutils
