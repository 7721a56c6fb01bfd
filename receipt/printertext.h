#pragma once

#include <QString>

#include <optional>

namespace receipt {

/// A text as a register prints it that knows only CP866: with the characters of that page alone, one byte
/// each. Quotation marks, dashes, blanks and the like become their plain forms, which says the same; what has
/// none becomes a question mark.
struct PrinterText
{
    QString text;
    /// The characters that became question marks, each once.
    QString lost;
    /// What did not fit; empty when all did.
    QString cut;

    bool isWhole() const { return lost.isEmpty() && cut.isEmpty(); }
    /// What differs, for a warning: the printer has no "😀"; is cut to 48 characters, is printed as "...".
    /// Empty when nothing is lost.
    QString warning() const;
};

/// The text for the printer, cut to that many characters; a limit of 0 is none.
PrinterText printerText(const QString& text, int limit = 0);
/// The characters of the text that CP866 has not, each once, substitutes or none.
QString missingCharacters(const QString& text);
/// The text cut to that many UTF-16 units, as the driver cuts what goes as UTF-8. Nothing else is done to it.
PrinterText cutText(const QString& text, int limit);
/// Over XML fonts and barcodes travel within the text. Why a line that would be taken for one of them cannot
/// be printed; nothing for any other.
std::optional<QString> printerCommandFault(const QString& line);

} // namespace receipt
