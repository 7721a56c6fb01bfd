#pragma once

#include "http/response.h"

#include <microhttpd.h>

#include <memory>

namespace http {

struct MhdResponseDeleter
{
    void operator()(MHD_Response* response) const { MHD_destroy_response(response); }
};
using MhdResponse = std::unique_ptr<MHD_Response, MhdResponseDeleter>;

namespace mhdresponse {

MhdResponse whole(const Response& response);
/// Without an end; the callback is asked for its bytes.
MhdResponse endless(const Headers& headers, MHD_ContentReaderCallback reader, void* context);

} // namespace mhdresponse

} // namespace http
