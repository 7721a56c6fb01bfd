#include "register/codepage.h"

#include <QRegularExpression>
#include <QTextCodec>

#include <numeric>

namespace emulator::codepage {

namespace {

// The character of each byte. Control characters stand for themselves: over ICU the codec turns three of them
// round.
QString madeTable()
{
    constexpr int byteCount = 256;
    constexpr int controlCount = 0x20;
    constexpr int del = 0x7F;
    QByteArray all(byteCount, 0);
    std::iota(all.begin(), all.end(), static_cast<char>(0));
    QString characters = QTextCodec::codecForName("CP866")->toUnicode(all);
    for (int control = 0; control < controlCount; ++control)
        characters[control] = QChar(control);
    characters[del] = QChar(del);
    return characters;
}

const QString& table()
{
    static const QString characters = madeTable();
    return characters;
}

char byteOf(char32_t character)
{
    const qsizetype byte = QChar::requiresSurrogates(character)
        ? -1
        : table().indexOf(QChar(static_cast<char16_t>(character)));
    return byte < 0 ? '?' : static_cast<char>(byte);
}

} // namespace

QString toText(const QByteArray& bytes)
{
    QString text;
    for (const char byte : bytes)
        text += table().at(static_cast<uchar>(byte));
    return text;
}

QByteArray fromText(const QString& text)
{
    QByteArray bytes;
    for (const uint character : text.toUcs4())
        bytes += byteOf(character);
    return bytes;
}

QString escaped(const QString& text)
{
    QString result;
    for (const QChar character : text) {
        if (character != QLatin1Char('\\') && table().contains(character))
            result += character;
        else
            result += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
    return result;
}

QString unescaped(const QString& text)
{
    static const QRegularExpression escape(QStringLiteral("\\\\u([0-9a-f]{4})"));
    QString result;
    qsizetype at = 0;
    for (auto found = escape.match(text); found.hasMatch(); found = escape.match(text, at)) {
        result += text.mid(at, found.capturedStart() - at) + QChar(found.captured(1).toUShort(nullptr, 16));
        at = found.capturedEnd();
    }
    return result + text.mid(at);
}

} // namespace emulator::codepage
