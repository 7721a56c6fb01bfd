#include "api/askedprotocol.h"

#include "http/problem.h"

namespace frserver {

std::optional<receipt::Protocol> askedProtocol(const http::Request& request)
{
    const std::optional<QString> asked = request.queryValue(QStringLiteral("protocol"));
    if (!asked)
        return std::nullopt;
    const std::optional<receipt::Protocol> protocol = receipt::protocolNamed(*asked);
    if (!protocol)
        throw http::Problem(400, QStringLiteral("protocol is XML or HEX."));
    return protocol;
}

} // namespace frserver
