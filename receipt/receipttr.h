#pragma once

#include <QCoreApplication>

namespace receipt {

/// A text for people in the language of the program; English where it has no translation. scripts/texts reads
/// what stands in it, or in QT_TR_NOOP().
inline QString tr(const char* text)
{
    return QCoreApplication::translate("receipt", text);
}

} // namespace receipt
