#pragma once

#include <QtGlobal>

namespace frserver {

/// How long a register took from requests to the first byte of its answers, together.
struct ExchangeTimes
{
    qint64 count = 0;
    /// A quick one takes less than a thousand of them.
    qint64 microseconds = 0;
};

} // namespace frserver
