#pragma once

#include <QByteArray>

namespace trace {

/// A script in Lua that makes Wireshark read what pcapng() writes: names and texts are those of this
/// library's tables.
QByteArray dissector();

} // namespace trace
