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

/// Reads a text with the printer's sequences in it. Each stands at the beginning of a line: "‼?f" with three
/// digits of the attribute and four of the line's height, "‼?q" with four digits of the length of a QR code's
/// text, "‼?b" with two digits of that of a barcode. No value when a sequence cannot be read.
std::optional<QList<PrintPiece>> readPrintText(const QString& text);

} // namespace emulator
