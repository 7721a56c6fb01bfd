#pragma once

#include <QString>

namespace receipt {

/// How the register is spoken to. What a receipt may hold depends on it.
enum class Protocol { Xml, Hex };

/// "XML", "HEX".
inline QString protocolName(Protocol protocol)
{
    return protocol == Protocol::Xml ? QStringLiteral("XML") : QStringLiteral("HEX");
}

} // namespace receipt
