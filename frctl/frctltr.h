#pragma once

#include <QCoreApplication>

namespace frctl {

/// A text for people in the language of the program; English where it has no translation. scripts/texts reads
/// what stands in it, or in QT_TR_NOOP(). A word
/// that has several forms in other languages says of what it is.
inline QString tr(const char* text, const char* of = nullptr)
{
    return QCoreApplication::translate("frctl", text, of);
}

} // namespace frctl
