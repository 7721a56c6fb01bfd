#include "textencoding.h"

#include "receipttr.h"

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

/// In UTF-16 every other byte of Latin letters is 00, of Russian ones 04; as UTF-8 these are control
/// characters that no text has.
bool isUtf16(const QByteArray& bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return true;
    qsizetype counts[2] = {0, 0};
    for (qsizetype index = 0; index < bytes.size(); ++index)
        counts[index % 2] += bytes.at(index) == '\x00' || bytes.at(index) == '\x04' ? 1 : 0;
    return std::max(counts[0], counts[1]) > bytes.size() / 4;
}

/// The first byte that no UTF-8 text of ours has: one of a character in another encoding, or half of one in
/// UTF-16.
qsizetype firstForeignByte(const QByteArray& bytes)
{
    const auto half = std::find_if(
        bytes.cbegin(), bytes.cend(), [](char byte) { return byte == '\x00' || byte == '\x04'; });
    return isUtf16(bytes) ? std::min(firstBadByte(bytes), static_cast<qsizetype>(half - bytes.cbegin()))
                          : firstBadByte(bytes);
}

QString likelyEncoding(const QByteArray& bytes)
{
    const auto count = [&bytes](uchar from, uchar to) {
        return std::count_if(bytes.cbegin(), bytes.cend(), [from, to](char byte) {
            return static_cast<uchar>(byte) >= from && static_cast<uchar>(byte) <= to;
        });
    };
    if (isUtf16(bytes))
        return QStringLiteral("UTF-16");
    if (bytes.contains('\0'))
        return tr("no text at all");
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
    if (QUtf8StringView(bytes).isValidUtf8() && !isUtf16(bytes))
        return std::nullopt;
    const qsizetype offset = firstForeignByte(bytes);
    return tr("is not UTF-8: byte %1 at offset %2, line %3; it looks like %4")
        .arg(QString::fromLatin1(bytes.mid(offset, 1).toHex().toUpper()))
        .arg(offset)
        .arg(bytes.left(offset).count('\n') + 1)
        .arg(likelyEncoding(bytes));
}

} // namespace receipt
