#pragma once

#include "api/pool.h"
#include "api/posteddocument.h"
#include "http/request.h"

namespace frserver {

class Api;

/// What a document of the pool is read by: each of its registers may get it. One at least.
QList<PostingRules> poolRules(const Api& api, const http::Request& request, const Pool& pool);
/// Reads the document by all of them, and judges it as whichever register takes it would.
PostedDocument documentForPool(const Api& api, const http::Request& request, const Pool& pool);

} // namespace frserver
