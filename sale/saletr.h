#pragma once

#include <QCoreApplication>

namespace sale {

/// A text for people in the language of the program; English where it has no translation. scripts/texts reads
/// what stands in it, or in QT_TR_NOOP().
inline QString tr(const char* text)
{
    return QCoreApplication::translate("sale", text);
}

/// tr() or english().
using Translation = QString (*)(const char* text);

/// For what the journal keeps: that is in one language, whoever has sold.
inline QString english(const char* text)
{
    return QString::fromLatin1(text);
}

} // namespace sale
