#pragma once

#include <QString>

namespace receipt {

/// True when the text has letters that the Russian keyboard layout makes out of Latin ones.
bool isRussianLayout(const QString& text);
/// What the same keys give in the Latin layout (US).
QString inLatinLayout(QString text);

} // namespace receipt
