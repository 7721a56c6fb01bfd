#pragma once

#include <sys/sysmacros.h>
#include <sys/types.h>

namespace devices {

/// Whether the number of a character device is that of a pty, at the end that hosts open.
inline bool isPty(dev_t device)
{
    constexpr unsigned firstMajor = 136;
    constexpr unsigned lastMajor = 143;
    return major(device) >= firstMajor && major(device) <= lastMajor;
}

} // namespace devices
