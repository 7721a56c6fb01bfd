#pragma once

#include "tape/page.h"

#include <QByteArray>

namespace emulator::panel::packedpage {

/// Thousands of pages are kept, so each takes as little room as it can.
QByteArray packed(const tape::Page& page);
tape::Page unpacked(const QByteArray& bytes);

} // namespace emulator::panel::packedpage
