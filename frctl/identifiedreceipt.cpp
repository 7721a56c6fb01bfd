#include "identifiedreceipt.h"

#include "documentid.h"
#include "documentkind.h"
#include "idconflict.h"

namespace frctl {

namespace {

/// Earlier releases took other ids, too, and theirs are still asked for.
void requireId(const sale::DocumentStore& store, const QString& id)
{
    if (!sale::isDocumentId(id) && !store.findId(id))
        throw UsageError(QStringLiteral("--id: \"%1\" has not 8 to 64 of A-Z a-z 0-9 . _ : -").arg(id));
}

} // namespace

IdentifiedReceipt::IdentifiedReceipt(const Options& options, const QByteArray& receipt)
    : m_draft(options.answer)
{
    sale::DocumentStore& store = options.journal->store();
    const QString id = options.id.isEmpty() ? sale::newDocumentId() : options.id;
    requireId(store, id);
    m_draft->id = id;
    try {
        m_sale.emplace(store,
            sale::DocumentRequest{
                id, documentKindName(sale::DocumentKind::Sale), receipt, options.registerName()});
    } catch (const sale::IdConflict& conflict) {
        // The answer is about the receipt that has the id.
        *m_draft = {.isDocument = true, .id = id};
        throw UsageError(QStringLiteral("--id: ") + QString::fromUtf8(conflict.what()));
    }
}

std::optional<Output> IdentifiedReceipt::answer() const
{
    const std::optional<sale::StoredDocument> record = m_sale->record();
    if (!record)
        return std::nullopt;
    const sale::Verdict verdict = verdictOf(*record);
    m_draft->isReplayed
        = record->state == sale::DocumentState::Unknown || record->state == sale::DocumentState::Issued;
    if (record->state == sale::DocumentState::Unknown)
        throw RegisterError(QStringLiteral("the sale %1 was broken off earlier; look at the register's tape, "
                                           "then frctl journal resolve %1")
                                .arg(m_sale->id()),
            QStringLiteral("Refusal"), sale::ErrorKind::Other, verdict);
    if (record->state != sale::DocumentState::Issued)
        return std::nullopt;
    Output output;
    const QString document
        = verdict.number == 0 ? QString() : QStringLiteral(": document %1").arg(verdict.number);
    output.lines = {QStringLiteral("receipt issued before") + document};
    output.verdict = verdict;
    return output;
}

std::optional<Output> IdentifiedReceipt::settledAnswer() const
{
    // What could not be settled on this register.
    if (m_sale->isUnsettled())
        throw RegisterError(QStringLiteral("the sale %1 was begun on fiscal drive %2")
                                .arg(m_sale->id(), m_sale->record()->drive),
            QStringLiteral("Refusal"), sale::ErrorKind::WrongRegister, m_sale->verdict());
    std::optional<Output> output = answer();
    if (output)
        output->status = ExitIssued;
    return output;
}

} // namespace frctl
