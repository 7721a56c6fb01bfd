#pragma once

#include <QByteArray>
#include <QString>
#include <QTextCodec>

/// The device's code page, through Qt's codec. In the header, so that the plugin asks nothing new of its
/// host; each source has its own, or what they keep would keep the plugin from being unloaded.
namespace cp866 {

static inline QTextCodec* codec()
{
    // Looked up under a lock, by each text of each position.
    static QTextCodec* const found = QTextCodec::codecForName("CP866");
    Q_ASSERT(found != nullptr);
    return found;
}

// Where Qt works with ICU the codec turns these three round, and a DEL within a name would be a separator on
// the wire. Every control character stands for itself.
inline constexpr char turnedRound[] = "\x1A\x1C\x7F";

/// Puts what the codec has made of the three back in its place.
template <typename Text>
Text putRight(Text text, const Text& turned, const Text& right)
{
    for (auto& character : text) {
        const qsizetype index = turned.indexOf(character);
        if (index >= 0)
            character = right.at(index);
    }
    return text;
}

/// One byte a character; what the code page lacks becomes "?".
static inline QByteArray encode(const QString& text)
{
    static const QByteArray turned = codec()->fromUnicode(QString::fromLatin1(turnedRound));
    return putRight(codec()->fromUnicode(text), turned, QByteArray(turnedRound));
}

static inline QString decode(const QByteArray& bytes)
{
    return putRight(
        codec()->toUnicode(bytes), codec()->toUnicode(turnedRound), QString::fromLatin1(turnedRound));
}

} // namespace cp866
