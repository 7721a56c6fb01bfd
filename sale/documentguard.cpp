#include "documentguard.h"

#include "abstractfrdriver.h"
#include "exceptions.h"

namespace sale {

namespace {

Outcome cancelAfterFailure(AbstractFrDriver& driver)
{
    try {
        driver.checkCancel();
        return Outcome::Cancelled;
    } catch (const BasicException&) {
        return Outcome::NotCancelled;
    }
}

using Recovery = std::function<Verdict(const BasicException&)>;

/// Runs the step and tells how it failed, if it did. recover tells after a failure of the register what has
/// become of the document; without it, and after an interruption, it is the verdict given.
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
            return DocumentResult{recover ? recover(exception) : verdict, failure};
        }
    } catch (...) {
        return DocumentResult{verdict, currentFailure()};
    }
}

Verdict afterRefusedOpen(AbstractFrDriver& driver, const BasicException& failure)
{
    const Outcome outcome = cancelAfterFailure(driver);
    const bool mayBeOpen = dynamic_cast<const FrNoConnectionException*>(&failure) != nullptr;
    return outcome == Outcome::NotCancelled && !mayBeOpen ? Outcome::None : outcome;
}

Verdict afterFailedClose(AbstractFrDriver& driver, const DocumentSteps& steps)
{
    if (steps.settle)
        return steps.settle();
    const bool isCancelled = steps.cancelAfterClose && cancelAfterFailure(driver) == Outcome::Cancelled;
    return isCancelled ? Outcome::Cancelled : Outcome::Unasked;
}

} // namespace

DocumentResult runDocument(AbstractFrDriver& driver, const DocumentSteps& steps)
{
    const auto refused = [&](const BasicException& failure) { return afterRefusedOpen(driver, failure); };
    if (const auto failed = failureOf(steps.open, Outcome::NotCancelled, refused))
        return *failed;
    const auto cancel = [&](const BasicException&) { return cancelAfterFailure(driver); };
    if (const auto failed = failureOf(steps.fill, Outcome::NotCancelled, cancel))
        return *failed;
    const Outcome unsettled = steps.settle ? Outcome::Unknown : Outcome::Unasked;
    const auto settle = [&](const BasicException&) { return afterFailedClose(driver, steps); };
    if (const auto failed = failureOf(steps.close, unsettled, settle))
        return *failed;
    return failureOf(steps.finish, steps.issued).value_or(DocumentResult{steps.issued, std::nullopt});
}

} // namespace sale
