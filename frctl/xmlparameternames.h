#pragma once

#include <span>

namespace frctl {

/// A setting of an XML register: the path by which it is written, the caption under which it is listed.
struct XmlParameterName
{
    const char* path;
    const char* caption;
};

std::span<const XmlParameterName> xmlParameterNames();

} // namespace frctl
