#pragma once

#include "tape/picture.h"

#include <QByteArray>

#include <optional>

namespace emulator {

/// The dots of a Windows bitmap of one bit a dot, which is what printers take. Of another one, and of one
/// that is not all there, the picture has the size and is white. No value for something else than a bitmap
/// with a size.
std::optional<tape::Picture> pictureOf(const QByteArray& bitmap, const QString& title);

} // namespace emulator
