#pragma once

#include "exceptions.h"

#include <cstdlib>
#include <string>

#include <cxxabi.h>

/// "Class: text" of the exception that the call throws, with the very class and not a parent; empty when it
/// throws none.
template <typename Call>
std::string thrown(const Call& call)
{
    try {
        call();
    } catch (const BasicException& e) {
        char* const name = abi::__cxa_demangle(typeid(e).name(), nullptr, nullptr, nullptr);
        const std::string text = std::string(name) + ": " + e.tr().ru().toStdString();
        std::free(name);
        return text;
    }
    return {};
}
