#pragma once

#include <QFlags>

namespace tape {

/// How a character is printed. The numbers are the bits of a register's text attribute, which both protocols
/// share.
enum class Attribute : quint8 { Small = 1, Bold = 8, DoubleHeight = 16, DoubleWidth = 32, Inverse = 128 };
Q_DECLARE_FLAGS(Attributes, Attribute)
Q_DECLARE_OPERATORS_FOR_FLAGS(Attributes)

/// Of the attribute on the wire; bits that nobody has a meaning for are left out.
Attributes attributesOf(int bits);

/// How many characters with these attributes stand on a line that takes so many normal ones.
int columns(Attributes attributes, int width);

} // namespace tape
