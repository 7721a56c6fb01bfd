#pragma once

#include <QString>

namespace receipt {

/// The character at the index, which moves on behind it; a half of a surrogate pair counts as one.
inline char32_t takeCodePoint(const QString& text, qsizetype& index)
{
    const QChar first = text.at(index++);
    if (!first.isHighSurrogate() || index >= text.size() || !text.at(index).isLowSurrogate())
        return first.unicode();
    return QChar::surrogateToUcs4(first, text.at(index++));
}

} // namespace receipt
