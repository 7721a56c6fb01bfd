#include "hex/codepage.h"

#include <QTextCodec>

namespace emulator::codepage {

namespace {

QTextCodec* codec()
{
    static QTextCodec* const cp866 = QTextCodec::codecForName("CP866");
    return cp866;
}

} // namespace

QString toText(const QByteArray& bytes)
{
    return codec()->toUnicode(bytes);
}

QByteArray fromText(const QString& text)
{
    return codec()->fromUnicode(text);
}

} // namespace emulator::codepage
