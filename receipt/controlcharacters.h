#pragma once

#include <QString>

#include <algorithm>

namespace receipt {

/// Whether a text holds control characters but white space: over HEX some of them end the field or the frame
/// that they stand in, over XML none may be in a document.
inline bool hasControlCharacters(const QString& text)
{
    return std::any_of(text.cbegin(), text.cend(), [](QChar character) {
        return character < u' ' && character != u'\t' && character != u'\n' && character != u'\r';
    });
}

} // namespace receipt
