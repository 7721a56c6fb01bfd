#pragma once

#include <stdexcept>

namespace http {

/// A certificate or its key cannot be used; what() says which file, and why.
class TlsError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace http
