#pragma once

#include "http/admission.h"
#include "http/bodyroom.h"
#include "http/counters.h"
#include "http/hangupwatch.h"
#include "http/limits.h"
#include "http/site.h"

namespace http {

/// What all connections of a server share.
struct ServerState
{
    ServerState(const Site& served, const Limits& given)
        : site(served)
        , limits(given)
        , admission(given)
        , bodies(given.bodies)
    {
    }

    const Site& site;
    const Limits limits;
    Admission admission;
    HangUpWatch watch;
    Counters counters;
    BodyRoom bodies;
    /// Has the library run soon: it does not notice by itself that a connection was resumed.
    std::function<void()> wake;
};

} // namespace http
