#include "textencoding.h"

#include <QStringDecoder>
#include <QUtf8StringView>

#include <algorithm>

namespace receipt {

namespace {

/// Where the first character begins that is none.
qsizetype firstBadByte(const QByteArray& bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    qsizetype start = 0;
    for (qsizetype index = 0; index < bytes.size(); ++index) {
        const QString decoded = decoder.decode(QByteArrayView(bytes).sliced(index, 1));
        if (decoder.hasError())
            return start;
        if (!decoded.isEmpty())
            start = index + 1;
    }
    return start;
}

QString likelyEncoding(const QByteArray& bytes)
{
    const auto count = [&bytes](uchar from, uchar to) {
        return std::count_if(bytes.cbegin(), bytes.cend(), [from, to](char byte) {
            return static_cast<uchar>(byte) >= from && static_cast<uchar>(byte) <= to;
        });
    };
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return QStringLiteral("UTF-16");
    // Russian letters: CP1251 has them above 0xC0; most of CP866 stand below 0xB0.
    return count(0x80, 0xAF) > count(0xC0, 0xFF) ? QStringLiteral("CP866") : QStringLiteral("CP1251");
}

} // namespace

QByteArray withoutByteOrderMark(const QByteArray& bytes)
{
    const QByteArray mark("\xEF\xBB\xBF");
    return bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes;
}

std::optional<QString> utf8Fault(const QByteArray& bytes)
{
    if (QUtf8StringView(bytes).isValidUtf8())
        return std::nullopt;
    const qsizetype offset = firstBadByte(bytes);
    return QStringLiteral("is not UTF-8: byte %1 at offset %2, line %3; it looks like %4")
        .arg(QString::fromLatin1(bytes.mid(offset, 1).toHex().toUpper()))
        .arg(offset)
        .arg(bytes.left(offset).count('\n') + 1)
        .arg(likelyEncoding(bytes));
}

} // namespace receipt
