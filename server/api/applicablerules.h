#pragma once

#include "api/pool.h"
#include "api/posteddocument.h"
#include "api/till.h"
#include "http/request.h"

namespace frserver {

class Api;

/// As far as nothing is known of it but its protocol.
Till::Settings anyRegister(receipt::Protocol protocol);
/// What a document of the register is read by.
PostingRules registerRules(const Api& api, const http::Request& request, const Till::Settings& till);
/// What a document of the pool is read by: each of its registers may get it. One at least.
QList<PostingRules> poolRules(const Api& api, const http::Request& request, const Pool& pool);
/// Reads the document by all of them, and judges it as whichever register takes it would.
PostedDocument documentForPool(const Api& api, const http::Request& request, const Pool& pool);

} // namespace frserver
