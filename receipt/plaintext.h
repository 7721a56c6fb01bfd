#pragma once

#include <QString>

#include <optional>

namespace receipt {

/// What a text is for, and so which control characters it may have.
enum class TextKind {
    /// None. Every text of a receipt but a marking code; also names of cashiers and lines to print. Not even
    /// line feeds: over HEX the driver would join the lines, over XML a font would end with the first one.
    Line,
    /// Group separators, U+001D. Barcodes have them too.
    MarkingCode
};

/// What keeps a text from being sent: a control character (below U+0020, or U+007F) that it may not have,
/// half of a surrogate pair, or a code that stands for no character. "has the control character U+0001 at
/// character 3"; characters count from 1.
std::optional<QString> textFault(const QString& text, TextKind kind = TextKind::Line);

} // namespace receipt
