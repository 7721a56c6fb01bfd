#include "documentguard.h"

#include "abstractfrdriver.h"
#include "exceptions.h"

namespace sale {

namespace {

/// Refused is what it comes to when the register answers, and does not cancel.
Outcome cancelAfterFailure(AbstractFrDriver& driver, Outcome refused)
{
    try {
        driver.checkCancel();
        return Outcome::Cancelled;
    } catch (const FrNoConnectionException&) {
        return Outcome::NotCancelled;
    } catch (const FrDriverException&) {
        return refused;
    } catch (...) {
        // Also a second interruption: the failure that led here is the one to report.
        return Outcome::NotCancelled;
    }
}

/// Tells what has become of the document; the failure is null after an interruption.
using Recovery = std::function<Verdict(const BasicException*)>;

/// Runs the step and tells how it failed, if it did. Without recover, and when it is interrupted itself, the
/// verdict is the one given.
std::optional<DocumentResult> failureOf(
    const std::function<void()>& step, const Verdict& verdict, const Recovery& recover = {})
{
    try {
        try {
            if (step)
                step();
            return std::nullopt;
        } catch (const BasicException& exception) {
            const Failure failure = currentFailure();
            return DocumentResult{recover ? recover(&exception) : verdict, failure};
        } catch (...) {
            const Failure failure = currentFailure();
            return DocumentResult{recover ? recover(nullptr) : verdict, failure};
        }
    } catch (...) {
        return DocumentResult{verdict, currentFailure()};
    }
}

Verdict afterRefusedOpen(AbstractFrDriver& driver, const BasicException* failure)
{
    // A register that has nothing to cancel did not open anything.
    const Outcome outcome = cancelAfterFailure(driver, Outcome::None);
    const bool mayBeOpen
        = failure == nullptr || dynamic_cast<const FrNoConnectionException*>(failure) != nullptr;
    return outcome == Outcome::NotCancelled && !mayBeOpen ? Outcome::None : outcome;
}

Verdict afterFailedClose(AbstractFrDriver& driver, const DocumentSteps& steps, bool isInterrupted)
{
    // Whoever interrupts does not want to wait for a settlement: the next run makes it.
    if (steps.settle)
        return isInterrupted ? Outcome::Unknown : steps.settle();
    const bool isCancelled
        = steps.cancelAfterClose && cancelAfterFailure(driver, Outcome::NotCancelled) == Outcome::Cancelled;
    return isCancelled ? Outcome::Cancelled : Outcome::Unasked;
}

} // namespace

DocumentResult runDocument(AbstractFrDriver& driver, const DocumentSteps& steps)
{
    const auto refused = [&](const BasicException* failure) { return afterRefusedOpen(driver, failure); };
    if (const auto failed = failureOf(steps.open, Outcome::NotCancelled, refused))
        return *failed;
    const auto cancel
        = [&](const BasicException*) { return cancelAfterFailure(driver, Outcome::NotCancelled); };
    if (const auto failed = failureOf(steps.fill, Outcome::NotCancelled, cancel))
        return *failed;
    const Outcome unsettled = steps.settle ? Outcome::Unknown : Outcome::Unasked;
    const auto settle
        = [&](const BasicException* failure) { return afterFailedClose(driver, steps, failure == nullptr); };
    if (const auto failed = failureOf(steps.close, unsettled, settle))
        return *failed;
    return failureOf(steps.finish, steps.issued).value_or(DocumentResult{steps.issued, std::nullopt});
}

} // namespace sale
