#include "plaintext.h"

#include "codepoint.h"
#include "receipttr.h"

namespace receipt {

namespace {

constexpr char32_t groupSeparator = 0x1D;

bool isAllowed(char32_t control, TextKind kind)
{
    return kind == TextKind::MarkingCode && control == groupSeparator;
}

const char* faultOf(char32_t character, TextKind kind)
{
    if ((character < 0x20 || character == 0x7F) && !isAllowed(character, kind))
        return QT_TR_NOOP("the control character");
    if (QChar::isSurrogate(character))
        return QT_TR_NOOP("half of a character,");
    // No XML document can hold them.
    return QChar::isNonCharacter(character) ? QT_TR_NOOP("no character:") : nullptr;
}

QString codePoint(char32_t character)
{
    return QString::number(static_cast<uint>(character), 16).toUpper().rightJustified(4, QLatin1Char('0'));
}

} // namespace

std::optional<QString> textFault(const QString& text, TextKind kind)
{
    int place = 0;
    for (qsizetype index = 0; index < text.size();) {
        const char32_t character = takeCodePoint(text, index);
        ++place;
        if (const char* const fault = faultOf(character, kind))
            return tr("has %1 U+%2 at character %3").arg(tr(fault), codePoint(character)).arg(place);
    }
    return std::nullopt;
}

} // namespace receipt
