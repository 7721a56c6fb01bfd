#pragma once

#include <QtGlobal>

namespace frserver {

/// How long a register took from requests to the first byte of its answers, together.
struct ExchangeTimes
{
    qint64 count = 0;
    qint64 milliseconds = 0;
};

} // namespace frserver
