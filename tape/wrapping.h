#pragma once

#include <QStringList>

namespace tape {

/// The text in pieces of so many characters; the last one may be shorter. An empty text is one piece.
QStringList wrapped(const QString& text, qsizetype width);

} // namespace tape
