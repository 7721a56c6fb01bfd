#pragma once

#include <QCoreApplication>

namespace devices {

/// A text for people in the language of the program; English where it has no translation. scripts/texts reads
/// what stands in it, or in QT_TR_NOOP().
inline QString tr(const char* text)
{
    return QCoreApplication::translate("devices", text);
}

} // namespace devices
