#pragma once

#include "receiptcheck.h"

namespace receipt {

/// A receipt under the rules, with what they have found so far.
struct Judgement
{
    const Receipt& receipt;
    const CheckOptions& options;
    QList<Finding>& findings;
    /// False when sums are not to be relied on.
    bool isWhole;

    void error(const QString& path, const QString& given, const QString& reason);
    void warning(const QString& path, const QString& given, const QString& reason);

private:
    void add(const Finding& finding);
};

} // namespace receipt
