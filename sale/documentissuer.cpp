#include "documentissuer.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "documentstart.h"
#include "witness.h"

namespace sale {

namespace {

void prepare(AbstractFrDriver& driver, Witness& witness, DocumentKind kind)
{
    if (isCash(kind))
        driver.openShift();
    witness.note();
}

DocumentSteps withWitness(const DocumentSteps& steps, Witness& witness)
{
    DocumentSteps witnessed = steps;
    witnessed.settle = [&witness] { return witness.afterFailure().value_or(Outcome::Unknown); };
    witnessed.issued = witness.issued();
    return witnessed;
}

} // namespace

DocumentResult issueDocument(AbstractFrDriver& driver, const Movement& ours, const DocumentSteps& steps,
    const DocumentOptions& options)
{
    Witness witness(driver, options.line, ours);
    try {
        startDocument(driver, options.cashier);
        prepare(driver, witness, ours.kind);
    } catch (...) {
        return {Outcome::None, currentFailure()};
    }
    DocumentResult result = runDocument(driver, withWitness(steps, witness));
    if (result.failure)
        return result;
    try {
        result.verdict = witness.afterSuccess();
    } catch (...) {
        result.failure = currentFailure();
    }
    return result;
}

} // namespace sale
