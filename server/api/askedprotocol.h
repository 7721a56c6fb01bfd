#pragma once

#include "http/request.h"
#include "protocol.h"

#include <optional>

namespace frserver {

/// Of the question; nothing when it says none. Throws http::Problem (400) for one that is none.
std::optional<receipt::Protocol> askedProtocol(const http::Request& request);

} // namespace frserver
