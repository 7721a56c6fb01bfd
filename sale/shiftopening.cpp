#include "shiftopening.h"

#include "abstractfrdriver.h"
#include "documentissuer.h"
#include "identifiedsale.h"
#include "shiftisclosed.h"

namespace sale {

namespace {

DocumentRequest openingFor(const IdentifiedSale& document)
{
    return plainRequest({}, documentKindName(DocumentKind::ShiftOpening),
        {{QStringLiteral("for"), document.id()}}, document.registerName());
}

} // namespace

bool isShiftOpen(AbstractFrDriver& driver, const RegisterLine& line)
{
    return line.isChecked() ? driver.isShiftOpen() : driver.getFnInfo().fnStatus.isShiftOpen;
}

Verdict openShiftAhead(AbstractFrDriver& driver, const DocumentOptions& options)
{
    if (!options.opensShift)
        throw ShiftIsClosed();
    if (options.sale == nullptr) {
        driver.openShift();
        return Outcome::Issued;
    }
    IdentifiedSale opening(options.sale->store(), openingFor(*options.sale));
    DocumentSteps steps;
    steps.close = [&driver] { driver.openShift(); };
    const DocumentResult result = issueDocument(
        driver, {DocumentKind::ShiftOpening}, steps, {options.line, options.cashier, &opening});
    const bool isOpen = result.verdict.outcome == Outcome::Issued;
    if (result.failure && (!isOpen || !result.failure->isOfDriver))
        std::rethrow_exception(result.failure->exception);
    return result.verdict;
}

} // namespace sale
