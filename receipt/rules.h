#pragma once

#include "finding.h"

#include <QList>

namespace receipt {

struct CheckOptions;
struct Receipt;

/// Judges a receipt by what the law and the register want of it and what can be told without the register:
/// rates, payments, people, agents, marking codes. All rules are run; what they find is appended. Of a
/// receipt that is not whole, since something in it is malformed, the sums are not judged.
void judge(
    const Receipt& receipt, const CheckOptions& options, QList<Finding>& findings, bool isWhole = true);

} // namespace receipt
