#pragma once

#include <QString>

#include <optional>

namespace receipt {

/// How the register is spoken to. What a receipt may hold depends on it.
enum class Protocol { Xml, Hex };

/// "XML", "HEX".
inline QString protocolName(Protocol protocol)
{
    return protocol == Protocol::Xml ? QStringLiteral("XML") : QStringLiteral("HEX");
}

inline std::optional<Protocol> protocolNamed(const QString& name)
{
    for (const Protocol protocol : {Protocol::Xml, Protocol::Hex}) {
        if (name == protocolName(protocol))
            return protocol;
    }
    return std::nullopt;
}

} // namespace receipt
