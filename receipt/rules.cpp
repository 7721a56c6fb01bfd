#include "rules.h"

#include "judgement.h"
#include "rulelist.h"

#include <algorithm>

namespace receipt {

namespace {

constexpr void (*allRules[])(Judgement&) = {
    rules::rates,
    rules::payments,
    rules::delivery,
    rules::cashier,
    rules::buyer,
    rules::agents,
    rules::taxNumbers,
    rules::markSyntax,
    rules::missingMarks,
    rules::markedPieces,
};

} // namespace

void Judgement::error(const QString& path, const QString& given, const QString& reason)
{
    add({Finding::Error, path, given, reason});
}

void Judgement::warning(const QString& path, const QString& given, const QString& reason)
{
    add({Finding::Warning, path, given, reason});
}

void Judgement::add(const Finding& finding)
{
    // Both halves of a split position stand at one path.
    const bool isKnown = std::any_of(findings.cbegin(), findings.cend(), [&finding](const Finding& other) {
        return other.path == finding.path && other.reason == finding.reason;
    });
    if (!isKnown)
        findings.append(finding);
}

void judge(const Receipt& receipt, const CheckOptions& options, QList<Finding>& findings, bool isWhole)
{
    Judgement judgement{receipt, options, findings, isWhole};
    for (const auto rule : allRules)
        rule(judgement);
}

} // namespace receipt
