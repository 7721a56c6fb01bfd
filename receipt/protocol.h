#pragma once

namespace receipt {

/// How the register is spoken to. What a receipt may hold depends on it.
enum class Protocol { Xml, Hex };

} // namespace receipt
