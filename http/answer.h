#pragma once

#include "http/pending.h"
#include "http/response.h"
#include "http/stream.h"

#include <memory>
#include <variant>

namespace http {

/// What a handler returns: the response; one that comes later; or a stream.
using Answer = std::variant<Response, std::shared_ptr<Pending>, std::shared_ptr<Stream>>;

} // namespace http
