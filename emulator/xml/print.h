#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace emulator {

/// A piece of what a host wants printed.
struct PrintPiece
{
    enum class Kind { Line, QrCode, Barcode };

    Kind kind = Kind::Line;
    QString text;
    /// Attribute bits of a line.
    int attribute = 0;
};

/// Reads a text with the printer's sequences in it; a line without one is printed as it stands. A sequence
/// stands at the beginning of a line: "‼?f" with three digits of the attribute and four of the line's height,
/// then the rest of the line; "‼?q" with four digits and the text of a QR code, "‼?b" with two digits and
/// that of a barcode. The digits, more of them where they do not suffice, are the number of characters of
/// that text, line feeds among them, and the line ends behind it. No value when a sequence cannot be read. A
/// strict register takes no other attributes and heights of lines than hosts have.
std::optional<QList<PrintPiece>> readPrintText(const QString& text, bool strict);

} // namespace emulator
