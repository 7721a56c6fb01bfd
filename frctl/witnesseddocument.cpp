#include "witnesseddocument.h"

#include "documentid.h"
#include "documentissuer.h"
#include "errors.h"
#include "identifiedsale.h"

#include <QJsonDocument>

namespace frctl {

namespace {

sale::IdentifiedSale newDocument(const Options& options, const PlainDocument& document)
{
    QJsonObject body = document.details;
    body.insert(QStringLiteral("type"), document.kind);
    options.answer->id = sale::newDocumentId();
    return {options.journal->store(),
        {options.answer->id, document.kind, QJsonDocument(body).toJson(QJsonDocument::Compact),
            options.registerName()}};
}

} // namespace

sale::Verdict issueWitnessed(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    const sale::Movement& ours, const sale::DocumentSteps& steps)
{
    sale::IdentifiedSale written = newDocument(options, document);
    sale::DocumentOptions made = options.document();
    made.sale = &written;
    const sale::DocumentResult result = sale::issueDocument(driver, ours, steps, made);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    if (result.verdict.outcome != sale::Outcome::Issued || result.verdict.times > 1)
        throw RegisterError(QStringLiteral("the register was silent, and the request was sent again"),
            QStringLiteral("Refusal"), sale::ErrorKind::Line, result.verdict);
    return result.verdict;
}

sale::Verdict issueNumbered(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    sale::DocumentKind kind, const std::function<void()>& issue, const std::function<void()>& finish)
{
    sale::DocumentSteps steps;
    steps.close = issue;
    steps.finish = finish;
    return issueWitnessed(driver, options, document, {kind}, steps);
}

sale::Verdict issueTraceless(AbstractFrDriver& driver, const Options& options, const PlainDocument& document,
    const sale::DocumentSteps& steps)
{
    sale::IdentifiedSale written = newDocument(options, document);
    const sale::DocumentResult result
        = sale::issueTraceless(driver, steps, {options.line(), options.cashier, &written});
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    return result.verdict;
}

} // namespace frctl
