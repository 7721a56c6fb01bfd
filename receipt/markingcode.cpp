#include "markingcode.h"

#include <QByteArray>

#include <algorithm>

namespace receipt {

QString markFromText(const QString& text)
{
    // A scanned code begins with a digit or holds characters that base64 has not. Digits in front decode to
    // bytes above 0x7F, which no marking code has, so the two cannot be taken for each other.
    const auto decoded
        = QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    const auto scanned = [](char byte) { return byte == '\x1D' || (byte >= ' ' && byte <= '~'); };
    const bool isBase64 = decoded && !(*decoded).isEmpty() && text.size() % 4 == 0
        && std::all_of((*decoded).cbegin(), (*decoded).cend(), scanned);
    return isBase64 ? QString::fromLatin1(*decoded) : text;
}

} // namespace receipt
