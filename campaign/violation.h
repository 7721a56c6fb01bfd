#pragma once

#include <stdexcept>

/// Something happened that must never happen.
class Violation : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};
