#pragma once

#include <QString>

namespace receipt {

/// What the JSON parser says of an error, which it says in English, in the language of the program. What it
/// quotes stays as it is.
QString parserWords(const QString& reason);

} // namespace receipt
