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

/// Runs the step; recover tells after a failure of the register what has become of the document, without it
/// and after an interruption it is the verdict given. An interrupted register was not answering: another
/// exchange would only make the user wait.
void runStep(const std::function<void()>& step, const DocumentVerdict& verdict,
    const std::function<DocumentVerdict(const BasicException&)>& recover = {})
{
    if (!step)
        return;
    try {
        try {
            step();
        } catch (const BasicException& failure) {
            throw RegisterError(failure, recover ? recover(failure) : verdict);
        }
    } catch (const Interrupted&) {
        throw Interrupted(verdict);
    }
}

} // namespace

void runDocument(AbstractFrDriver& driver, const DocumentSteps& steps)
{
    const auto cancel = [&driver](const BasicException&) { return cancelAfterFailure(driver); };
    runStep(steps.open, DocumentOutcome::NotCancelled, [&](const BasicException& failure) {
        const DocumentOutcome outcome = cancelAfterFailure(driver);
        const bool mayBeOpen = dynamic_cast<const FrNoConnectionException*>(&failure) != nullptr;
        return outcome == DocumentOutcome::NotCancelled && !mayBeOpen ? DocumentOutcome::None : outcome;
    });
    runStep(steps.fill, DocumentOutcome::NotCancelled, cancel);
    const DocumentVerdict unsettled = steps.settle ? DocumentOutcome::Unknown : DocumentOutcome::Unasked;
    runStep(steps.close, unsettled, [&](const BasicException&) {
        if (steps.settle)
            return steps.settle();
        const bool cancelled
            = steps.cancelAfterClose && cancelAfterFailure(driver) == DocumentOutcome::Cancelled;
        return cancelled ? DocumentVerdict(DocumentOutcome::Cancelled) : unsettled;
    });
    runStep(steps.finish, steps.issued);
}

} // namespace frctl
