#pragma once

#include "documentstate.h"

#include <QtGlobal>

namespace sale {

/// How many documents ended alike, or wait.
struct DocumentCount
{
    DocumentState state = DocumentState::Queued;
    StateReason reason = StateReason::None;
    qint64 count = 0;
};

} // namespace sale
