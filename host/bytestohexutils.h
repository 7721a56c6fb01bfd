#pragma once

#include "frhost_export.h"

#include <QByteArray>
#include <QString>

namespace bytestohexutils {

/// Two lower-case hexadecimal digits behind the prefix.
FRHOST_EXPORT QString byteToHexStr(unsigned char byte, const QString& prefix);
/// All bytes in that form, with the separator between them.
FRHOST_EXPORT QString bytesToHexStr(const QByteArray& bytes, const QString& prefix, const QString& separator);
/// The bytes in hexadecimal, separated by blanks.
FRHOST_EXPORT QString bytesToHexWithSpacesStr(const QByteArray& bytes);

} // namespace bytestohexutils
