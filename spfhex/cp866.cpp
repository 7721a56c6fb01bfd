#include "cp866.h"

#include <QTextCodec>

namespace spfhex {

namespace {

QTextCodec* codec()
{
    return QTextCodec::codecForName("CP866");
}

} // namespace

QByteArray toCp866(const QString& text)
{
    return codec()->fromUnicode(text);
}

QString fromCp866(const QByteArray& bytes)
{
    return codec()->toUnicode(bytes);
}

} // namespace spfhex
