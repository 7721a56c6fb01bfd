#pragma once

#include "issueresult.h"
#include "output.h"
#include "receipt.h"

namespace frctl {

/// "outcome" and, where there is one, "documentNumber"; empty for None.
QJsonObject documentJson(const sale::Verdict& verdict);
/// What is said of a receipt that was issued.
Output receiptOutput(const receipt::Receipt& receipt, const sale::IssueResult& result);

} // namespace frctl
