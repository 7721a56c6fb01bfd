#include "documentguard.h"

#include "abstractfrdriver.h"
#include "exceptions.h"

namespace frctl {

namespace {

DocumentOutcome cancelAfterFailure(AbstractFrDriver& driver)
{
    try {
        driver.checkCancel();
        return DocumentOutcome::Cancelled;
    } catch (const BasicException&) {
        return DocumentOutcome::NotCancelled;
    }
}

void runStep(const std::function<void()>& step, DocumentOutcome outcome)
{
    try {
        step();
    } catch (const BasicException& failure) {
        throw RegisterError(failure, outcome);
    } catch (const Interrupted&) {
        throw Interrupted(outcome);
    }
}

} // namespace

void runDocument(AbstractFrDriver& driver, const DocumentSteps& steps)
{
    try {
        steps.fill();
    } catch (const BasicException& failure) {
        throw RegisterError(failure, cancelAfterFailure(driver));
    } catch (const Interrupted&) {
        // The register was not answering; another exchange would only make the user wait.
        throw Interrupted(DocumentOutcome::NotCancelled);
    }
    runStep(steps.close, DocumentOutcome::Unknown);
    if (steps.finish)
        runStep(steps.finish, DocumentOutcome::Issued);
}

} // namespace frctl
