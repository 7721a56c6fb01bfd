#include "printertext.h"

#include "codepoint.h"
#include "receipttr.h"

#include <QStringList>

#include <algorithm>
#include <array>

#include <frutils.h>

namespace receipt {

namespace {

struct Substitute
{
    /// Any of these characters.
    const char16_t* characters;
    const char16_t* plain;
};

// Only what says the same in plain characters. Letters of other alphabets are not among them: "Crème" is not
// "Creme".
constexpr Substitute substitutes[] = {
    {u"«»„“”‟″", u"\""},
    {u"‘’‚‛′ʼ‹›", u"'"},
    {u"–—―‐‑‒−⁃", u"-"},
    {u"…", u"..."},
    {u"₽", u"руб."},
    {u"€", u"EUR"},
    {u"×✕", u"x"},
    {u"•", u"·"},
    {u"½", u"1/2"},
    {u"¼", u"1/4"},
    {u"¾", u"3/4"},
    {u"²", u"2"},
    {u"³", u"3"},
    {u"™", u"(TM)"},
    {u"®", u"(R)"},
    {u"©", u"(C)"},
    {u"±", u"+/-"},
    {u"≤", u"<="},
    {u"≥", u">="},
    {u"і", u"i"},
    {u"І", u"I"},
    // No-break, figure, thin, narrow and wide blanks.
    {u"\u00A0\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u202F\u205F\u3000", u" "},
    // Not seen on paper: soft hyphen, joiners, marks of direction, byte order mark, variants of emoji.
    {u"\u00AD\u200B\u200C\u200D\u200E\u200F\u2060\uFEFF\uFE0E\uFE0F", u""},
};

const char16_t* substituteOf(QChar character)
{
    for (const Substitute& entry : substitutes) {
        if (QStringView(entry.characters).contains(character))
            return entry.plain;
    }
    return nullptr;
}

bool isInCodePage(const QString& character)
{
    return character == QLatin1Char('?') || (character.size() == 1 && FrUtils::to866(character) != "?");
}

/// What nearly all texts are made of. The codec takes its time for each call, so it is asked once.
class PlainCharacters
{
public:
    PlainCharacters()
    {
        for (std::size_t code = 0; code < m_isPlain.size(); ++code) {
            const QChar character(static_cast<char16_t>(code));
            m_isPlain.at(code) = substituteOf(character) == nullptr && isInCodePage(character);
        }
    }

    bool areAll(const QString& text) const
    {
        return std::all_of(text.cbegin(), text.cend(), [this](QChar character) {
            return character.unicode() < m_isPlain.size() && m_isPlain.at(character.unicode());
        });
    }

private:
    /// Latin, Greek and Cyrillic.
    std::array<bool, 0x500> m_isPlain{};
};

bool isPlain(const QString& text)
{
    static const PlainCharacters characters;
    return characters.areAll(text);
}

QStringList charactersOf(const QString& text)
{
    QStringList characters;
    for (qsizetype index = 0; index < text.size();) {
        const qsizetype start = index;
        takeCodePoint(text, index);
        characters.append(text.mid(start, index - start));
    }
    return characters;
}

void appendOnce(QString& list, const QString& character)
{
    if (!list.contains(character))
        list += character;
}

void append(PrinterText& result, const QString& character)
{
    const char16_t* const plain = character.size() == 1 ? substituteOf(character.at(0)) : nullptr;
    if (plain != nullptr) {
        result.text += QStringView(plain);
    } else if (isInCodePage(character)) {
        result.text += character;
    } else {
        result.text += QLatin1Char('?');
        appendOnce(result.lost, character);
    }
}

} // namespace

QString PrinterText::warning() const
{
    QStringList parts;
    if (!lost.isEmpty())
        parts.append(tr("the printer has no \"%1\"").arg(lost));
    if (!cut.isEmpty())
        parts.append(tr("is cut to %1 characters").arg(text.size()));
    if (!parts.isEmpty())
        parts.append(tr("is printed as \"%1\"").arg(text));
    return parts.join(QStringLiteral("; "));
}

PrinterText printerText(const QString& text, int limit)
{
    PrinterText result;
    // Some programs write й and ё as a letter and its mark.
    const QString composed = text.normalized(QString::NormalizationForm_C);
    if (isPlain(composed))
        return cutText(composed, limit);
    for (const QString& character : charactersOf(composed))
        append(result, character);
    const PrinterText fitting = cutText(result.text, limit);
    result.text = fitting.text;
    result.cut = fitting.cut;
    return result;
}

QString missingCharacters(const QString& text)
{
    QString missing;
    if (isPlain(text))
        return missing;
    for (const QString& character : charactersOf(text)) {
        if (!isInCodePage(character))
            appendOnce(missing, character);
    }
    return missing;
}

PrinterText cutText(const QString& text, int limit)
{
    return limit > 0 ? PrinterText{text.left(limit), {}, text.mid(limit)} : PrinterText{text, {}, {}};
}

std::optional<QString> printerCommandFault(const QString& line)
{
    const QString command = QStringLiteral("‼?");
    if (!line.startsWith(command))
        return std::nullopt;
    return tr("must not begin with %1, which is a command to the printer over XML").arg(command);
}

} // namespace receipt
