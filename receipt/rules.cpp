#include "rules.h"

#include "judgement.h"
#include "rulelist.h"

namespace receipt {

namespace {

constexpr void (*allRules[])(Judgement&) = {
    rules::positionCount,
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

Judgement::Judgement(
    const Receipt& judged, const CheckOptions& checkOptions, QList<Finding>& found, bool whole)
    : receipt(judged)
    , options(checkOptions)
    , findings(found)
    , isWhole(whole)
{
    for (const Finding& finding : findings)
        m_known.insert({finding.path, finding.reason});
}

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
    const qsizetype known = m_known.size();
    m_known.insert({finding.path, finding.reason});
    if (m_known.size() > known)
        findings.append(finding);
}

void judge(const Receipt& receipt, const CheckOptions& options, QList<Finding>& findings, bool isWhole)
{
    Judgement judgement(receipt, options, findings, isWhole);
    for (const auto rule : allRules)
        rule(judgement);
}

} // namespace receipt
