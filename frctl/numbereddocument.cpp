#include "numbereddocument.h"

#include "documentguard.h"
#include "documentoutput.h"
#include "settlement.h"

namespace frctl {

namespace {

sale::DriveMark markBefore(AbstractFrDriver& driver, sale::MarkReading reading)
{
    try {
        return sale::noteDrive(driver, reading);
    } catch (...) {
        throwFailure(sale::currentFailure(), sale::Outcome::None);
    }
}

} // namespace

sale::Verdict issueNumbered(AbstractFrDriver& driver, sale::MarkReading reading,
    const std::function<void()>& issue, const std::function<void()>& finish)
{
    const sale::DriveMark before = markBefore(driver, reading);
    sale::DocumentSteps steps;
    steps.close = issue;
    steps.settle
        = [&] { return sale::settleAfterFailure(driver, before, reading).value_or(sale::Outcome::Unknown); };
    steps.finish = finish;
    // The drive numbers its documents without gaps.
    if (before.isKnown())
        steps.issued.number = before.lastDocument + 1;
    const sale::DocumentResult result = sale::runDocument(driver, steps);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    return result.verdict;
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
