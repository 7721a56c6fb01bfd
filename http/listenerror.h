#pragma once

#include <stdexcept>

namespace http {

/// A server could not listen there; what() says why.
class ListenError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace http
