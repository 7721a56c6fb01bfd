#pragma once

#include "http/response.h"
#include "journalerror.h"

namespace frserver {

/// What is answered when the journal fails; the same whatever was asked.
http::Response journalProblem(const sale::JournalError& error);

} // namespace frserver
