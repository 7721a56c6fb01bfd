#include "documentissuer.h"

#include "abstractfrdriver.h"
#include "documentguard.h"
#include "documentstart.h"
#include "errortable.h"
#include "identifiedsale.h"
#include "shiftopening.h"
#include "witness.h"

#include <QScopeGuard>

namespace sale {

namespace {

void prepare(AbstractFrDriver& driver, Witness& witness, const Movement& ours, const DocumentOptions& options)
{
    startDocument(driver, options.cashier);
    witness.note([&] { return openShiftAhead(driver, options); });
    if (options.sale == nullptr)
        return;
    witness.compareWith(options.sale->store());
    options.sale->begin(witness.before(), {}, ours);
}

DocumentSteps withWitness(const DocumentSteps& steps, Witness& witness, bool& isOpen)
{
    DocumentSteps witnessed = steps;
    witnessed.settle = [&witness, &isOpen] {
        const std::optional<Verdict> verdict = witness.afterFailure();
        isOpen = !verdict;
        return verdict.value_or(Outcome::Unknown);
    };
    witnessed.issued = witness.issued();
    return witnessed;
}

/// What wants an open shift was not made without one. A request that is sent again may meet the state that it
/// has made itself.
bool isKnownNotMade(const Failure& failure, const DocumentSteps& steps, bool isSentAgain)
{
    if (failure.exceptionName == QStringLiteral("ShiftIsClosed"))
        return true;
    const bool isOfData = failure.kind == ErrorKind::Data;
    return steps.isOneRequest && failure.isOfDriver
        && (isOfData || (isRefusalOfState(failure.text) && !isSentAgain));
}

/// What was interrupted, or could not be asked about, is left to the next run.
void writeDown(
    IdentifiedSale* document, DocumentResult& result, bool isOpen, const std::optional<DriveMark>& after)
{
    if (document == nullptr)
        return;
    try {
        if (result.failure)
            document->note(*result.failure, result.verdict);
        if (!isOpen)
            document->settle(result.verdict, after, result.clock.time);
    } catch (...) {
        // The failure that led here is the one to report.
        if (!result.failure)
            result.failure = currentFailure();
    }
}

} // namespace

DocumentResult issueDocument(AbstractFrDriver& driver, const Movement& ours, const DocumentSteps& steps,
    const DocumentOptions& options)
{
    Witness witness(driver, options.line, ours);
    try {
        prepare(driver, witness, ours, options);
    } catch (...) {
        return {Outcome::None, currentFailure()};
    }
    bool isOpen = false;
    DocumentResult result = runDocument(driver, withWitness(steps, witness, isOpen));
    if (!result.failure) {
        try {
            result.verdict = witness.afterSuccess();
            result.clock = ClockReading::behind(driver, options.line);
        } catch (...) {
            result.failure = currentFailure();
            // The next run counts how often it was issued.
            isOpen = true;
        }
    }
    isOpen = isOpen || (result.failure && !result.failure->isOfDriver && result.verdict == Outcome::Unknown);
    writeDown(options.sale, result, isOpen, result.failure ? std::nullopt : witness.after());
    return result;
}

DocumentResult issueTraceless(
    AbstractFrDriver& driver, const DocumentSteps& steps, const DocumentOptions& options)
{
    try {
        if (!options.cashier.name.isEmpty())
            startDocument(driver, options.cashier);
        if (options.sale != nullptr)
            options.sale->begin({});
    } catch (...) {
        return {Outcome::None, currentFailure()};
    }
    bool isSentAgain = false;
    DocumentSteps watched = steps;
    watched.close = [&] {
        const quint64 before = options.line.repeatsNow();
        const auto count = qScopeGuard([&] { isSentAgain = options.line.repeatsNow() != before; });
        steps.close();
    };
    DocumentResult result = runDocument(driver, watched);
    if (result.failure && isKnownNotMade(*result.failure, steps, isSentAgain))
        result.verdict = Outcome::None;
    result.isSentAgain = isSentAgain && !result.failure;
    if (!result.failure)
        result.clock = ClockReading::behind(driver, options.line);
    writeDown(options.sale, result, false, {});
    return result;
}

} // namespace sale
