#include "witnesseddocument.h"

#include "documentissuer.h"
#include "documentoutput.h"

namespace frctl {

sale::Verdict issueWitnessed(AbstractFrDriver& driver, const sale::DocumentOptions& document,
    const sale::Movement& ours, const sale::DocumentSteps& steps)
{
    const sale::DocumentResult result = sale::issueDocument(driver, ours, steps, document);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    if (result.verdict.outcome != sale::Outcome::Issued || result.verdict.times > 1)
        throw RegisterError(QStringLiteral("the register was silent, and the request was sent again"),
            QStringLiteral("Refusal"), result.verdict);
    return result.verdict;
}

sale::Verdict issueNumbered(AbstractFrDriver& driver, const sale::DocumentOptions& document,
    sale::DocumentKind kind, const std::function<void()>& issue, const std::function<void()>& finish)
{
    sale::DocumentSteps steps;
    steps.close = issue;
    steps.finish = finish;
    return issueWitnessed(driver, document, {kind}, steps);
}

Output withVerdict(Output output, const sale::Verdict& verdict)
{
    const QJsonObject json = documentJson(verdict);
    for (auto field = json.begin(); field != json.end(); ++field)
        output.json.insert(field.key(), field.value());
    output.verdict = verdict;
    return output;
}

} // namespace frctl
