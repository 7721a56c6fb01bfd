#include "http/mhdresponse.h"

namespace http::mhdresponse {

namespace {

void deleteBody(void* body)
{
    delete static_cast<QByteArray*>(body);
}

void addHeaders(MHD_Response* response, const Headers& headers)
{
    for (const auto& [name, value] : headers.fields())
        MHD_add_response_header(response, name.constData(), value.constData());
}

} // namespace

MhdResponse whole(const Response& response)
{
    // Shared with its maker, so that a large one is not copied.
    auto body = std::make_unique<QByteArray>(response.body);
    MhdResponse made(MHD_create_response_from_buffer_with_free_callback_cls(
        static_cast<size_t>(body->size()), const_cast<char*>(body->constData()), &deleteBody, body.get()));
    if (!made)
        return made;
    static_cast<void>(body.release());
    addHeaders(made.get(), response.headers);
    return made;
}

MhdResponse endless(const Headers& headers, MHD_ContentReaderCallback reader, void* context)
{
    constexpr size_t block = 4096;
    MhdResponse made(MHD_create_response_from_callback(MHD_SIZE_UNKNOWN, block, reader, context, nullptr));
    if (made)
        addHeaders(made.get(), headers);
    return made;
}

} // namespace http::mhdresponse
