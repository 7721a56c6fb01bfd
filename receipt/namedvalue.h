#pragma once

namespace receipt {

/// A name in the JSON and the number that it stands for on the register.
struct NamedValue
{
    const char* name;
    int value;
};

} // namespace receipt
