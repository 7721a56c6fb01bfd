#pragma once

#include "issueresult.h"
#include "options.h"
#include "output.h"

#include <optional>

namespace frctl {

/// What is said of a sale that the journal knows as issued, before any register is asked; nothing for one
/// that may be made. The receipt is the text of its file. Throws UsageError when the id is none, IdConflict
/// when it belongs to another receipt, RegisterError when its outcome is unknown, JournalError.
std::optional<Output> knownAnswer(const Options& options, const QByteArray& receipt);

/// What is said of one that the journal answered once the pending sales of the register at hand were settled.
/// Throws RegisterError unless it is issued.
Output settledAnswer(const Options& options, const sale::IssueResult& result);

} // namespace frctl
