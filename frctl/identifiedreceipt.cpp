#include "identifiedreceipt.h"

#include "documentoutput.h"
#include "idconflict.h"

namespace frctl {

IdentifiedReceipt::IdentifiedReceipt(const QString& journalFile, const QString& id, const QByteArray& receipt)
    : m_journal(journalFile)
{
    try {
        m_sale.emplace(m_journal, id, receipt);
    } catch (const sale::IdConflict& conflict) {
        throw UsageError(QStringLiteral("--id: ") + QString::fromUtf8(conflict.what()));
    }
}

std::optional<Output> IdentifiedReceipt::answer() const
{
    const sale::Verdict verdict = m_sale->record().verdict;
    if (verdict.outcome == sale::Outcome::Unknown)
        throw RegisterError(QStringLiteral("the sale %1 was broken off earlier").arg(m_sale->id()),
            QStringLiteral("Refusal"), verdict);
    if (verdict.outcome != sale::Outcome::Issued)
        return std::nullopt;
    Output output;
    output.lines = {QStringLiteral("receipt issued before: document %1").arg(verdict.number)};
    output.json = documentJson(verdict);
    output.verdict = verdict;
    output.json.insert(QStringLiteral("repeated"), true);
    return output;
}

std::optional<Output> IdentifiedReceipt::settledAnswer() const
{
    const sale::SaleRecord record = m_sale->record();
    // What could not be settled on this register.
    if (record.verdict.outcome == sale::Outcome::None)
        throw RegisterError(
            QStringLiteral("the sale %1 was begun on fiscal drive %2").arg(record.id, record.before.drive),
            QStringLiteral("Refusal"), m_sale->verdict());
    std::optional<Output> output = answer();
    if (output)
        output->status = ExitIssued;
    return output;
}

} // namespace frctl
