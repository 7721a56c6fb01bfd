#pragma once

#include "http/response.h"
#include "storeddocument.h"

namespace frserver {

class Api;

/// What whoever posts a document is answered: 201 for one that is issued (200 when it was before), 202 while
/// it waits or is made, 409 for one that is not issued, or perhaps.
http::Response documentResponse(
    const Api& api, const sale::StoredDocument& document, bool isReplayed = false);

/// Whether there is more to come of it.
constexpr bool isPending(sale::DocumentState state)
{
    return state == sale::DocumentState::Queued || state == sale::DocumentState::Running;
}

} // namespace frserver
