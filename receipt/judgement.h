#pragma once

#include "receiptcheck.h"

#include <QSet>

#include <utility>

namespace receipt {

/// A receipt under the rules, with what they have found so far.
struct Judgement
{
    Judgement(const Receipt& judged, const CheckOptions& checkOptions, QList<Finding>& found, bool whole);

    const Receipt& receipt;
    const CheckOptions& options;
    QList<Finding>& findings;
    /// False when sums are not to be relied on.
    const bool isWhole;

    void error(const QString& path, const QString& given, const QString& reason);
    void warning(const QString& path, const QString& given, const QString& reason);

private:
    void add(const Finding& finding);

    /// Path and reason of each finding.
    QSet<std::pair<QString, QString>> m_known;
};

} // namespace receipt
