#pragma once

#include "http/access.h"
#include "http/answer.h"
#include "http/request.h"

namespace http {

using Handler = std::function<Answer(const Request&)>;

struct Route
{
    QByteArray method;
    /// Such as "/v1/registers/{name}/documents".
    QString pattern;
    Handler handler;
    Access access;
};

} // namespace http
