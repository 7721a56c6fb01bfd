#pragma once

#include "memory/documentrow.h"

#include <QString>

namespace emulator {

/// @name What shows that a row is the one that was written
/// @{
QByteArray rowDigest(const QString& name, const QByteArray& content);
QByteArray rowDigest(const DocumentRow& row);
/// @}

} // namespace emulator
