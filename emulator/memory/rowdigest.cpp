#include "memory/rowdigest.h"

#include <QCryptographicHash>

namespace emulator {

namespace {

QByteArray digestOf(const QByteArray& text)
{
    constexpr qsizetype digits = 16;
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex().left(digits);
}

} // namespace

QByteArray rowDigest(const QString& name, const QByteArray& content)
{
    return digestOf(name.toUtf8() + '\n' + content);
}

QByteArray rowDigest(const DocumentRow& row)
{
    return digestOf(QByteArray::number(row.number) + '\n' + row.record + '\n' + row.entry + '\n' + row.page);
}

} // namespace emulator
