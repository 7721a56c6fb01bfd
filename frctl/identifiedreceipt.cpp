#include "identifiedreceipt.h"

#include "documentid.h"
#include "documentkind.h"
#include "frctltr.h"
#include "idconflict.h"
#include "identifiedsale.h"
#include "invaliddocumentid.h"

namespace frctl {

namespace {

Output issuedBefore(const sale::Verdict& verdict)
{
    const QString document = verdict.number == 0 ? QString() : tr(": document %1").arg(verdict.number);
    Output output{{tr("receipt issued before") + document}, {}};
    output.verdict = verdict;
    return output;
}

[[noreturn]] void throwUnknown(const QString& id, const sale::Verdict& verdict)
{
    throw RegisterError(tr("the sale %1 was broken off earlier; look at the register's tape, "
                           "then frctl journal resolve %1")
                            .arg(id),
        QStringLiteral("Refusal"), sale::ErrorKind::Other, verdict);
}

sale::IdentifiedSale saleOf(const Options& options, const QByteArray& receipt)
{
    sale::DocumentStore& store = options.journal->store();
    try {
        sale::requireDocumentId(store, options.id);
        return {
            store, {options.id, documentKindName(sale::DocumentKind::Sale), receipt, options.registerName()}};
    } catch (const sale::IdConflict&) {
        // The answer is about the receipt that has the id.
        *options.answer = {.isDocument = true, .id = options.id};
        throw;
    } catch (const sale::InvalidDocumentId& error) {
        throw UsageError(QStringLiteral("--id: ") + QString::fromUtf8(error.what()));
    }
}

} // namespace

std::optional<Output> knownAnswer(const Options& options, const QByteArray& receipt)
{
    if (options.id.isEmpty())
        return std::nullopt;
    const sale::IdentifiedSale known = saleOf(options, receipt);
    const sale::Verdict verdict = known.verdict();
    // One that was begun is asked about first.
    if (verdict.outcome == sale::Outcome::NotIssued || known.isUnsettled())
        return std::nullopt;
    options.answer->isReplayed = true;
    if (verdict.outcome == sale::Outcome::Unknown)
        throwUnknown(options.id, verdict);
    return issuedBefore(verdict);
}

Output settledAnswer(const Options& options, const sale::IssueResult& result)
{
    options.answer->isReplayed = result.isFinal;
    // What could not be settled on this register.
    if (!result.isFinal)
        throw RegisterError(tr("the sale %1 was begun on fiscal drive %2")
                                .arg(result.id, options.journal->store().findId(result.id)->drive),
            QStringLiteral("Refusal"), sale::ErrorKind::WrongRegister, result.verdict);
    if (!result.isIssued())
        throwUnknown(result.id, result.verdict);
    Output output = issuedBefore(result.verdict);
    // Of one that another program sold meanwhile there is no more to say than of any that is sold.
    if (options.answer->settledIds.contains(result.id))
        output.status = ExitIssued;
    return output;
}

} // namespace frctl
