#pragma once

#include "trace/frame.h"

namespace trace {

/// The trace as a capture file in the form pcapng, that network analysers open: a packet a frame, an
/// interface a connection with link type USER0 (147), and notes as comments of the packet that follows them.
/// Inbound is what comes from the register.
QByteArray pcapng(const Trace& trace);

} // namespace trace
