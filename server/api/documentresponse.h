#pragma once

#include "http/problem.h"
#include "http/response.h"
#include "storeddocument.h"

namespace frserver {

class Api;

/// What whoever posts a document is answered: 201 for one that is issued (200 when it was before), 202 while
/// it waits or is made, 409 for one that is not issued, or perhaps.
http::Response documentResponse(
    const Api& api, const sale::StoredDocument& document, bool isReplayed = false);

/// What is said of one that was archived: 410 to whoever asks, 422 to whoever posts its id.
http::Problem archivedDocument(int status, const QString& id, const QDateTime& accepted);

/// Whether there is more to come of it.
constexpr bool isPending(sale::DocumentState state)
{
    return state == sale::DocumentState::Queued || state == sale::DocumentState::Running;
}

} // namespace frserver
