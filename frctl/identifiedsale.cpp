#include "identifiedsale.h"

#include "errors.h"

#include <QCryptographicHash>
#include <QJsonDocument>

namespace frctl {

namespace {

/// Blanks and the order of the fields make no other receipt.
QByteArray fingerprint(const QByteArray& receipt)
{
    const QByteArray plain = QJsonDocument::fromJson(receipt).toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(plain, QCryptographicHash::Sha256).toHex();
}

} // namespace

IdentifiedSale::IdentifiedSale(const QString& journalFile, const QString& id, const QByteArray& receipt)
    : m_journal(journalFile)
    , m_id(id)
    , m_receipt(fingerprint(receipt))
{
    if (record().receipt != m_receipt)
        throw UsageError(QStringLiteral("--id: \"%1\" is the id of another receipt").arg(id));
}

SaleRecord IdentifiedSale::record() const
{
    // A sale that is not in the journal is as one that was not issued.
    return m_journal.find(m_id).value_or(SaleRecord{m_id, m_receipt, DocumentOutcome::NotIssued, {}});
}

std::optional<Output> IdentifiedSale::answer() const
{
    const DocumentVerdict verdict = record().verdict;
    if (verdict.outcome == DocumentOutcome::Unknown)
        throw RegisterError(QStringLiteral("the sale %1 was broken off earlier").arg(m_id),
            QStringLiteral("Refusal"), verdict);
    if (verdict.outcome != DocumentOutcome::Issued)
        return std::nullopt;
    Output output;
    output.lines = {QStringLiteral("receipt issued before: document %1").arg(verdict.number)};
    output.json = documentJson(verdict);
    output.json.insert(QStringLiteral("repeated"), true);
    return output;
}

std::optional<Output> IdentifiedSale::settledAnswer() const
{
    const SaleRecord sale = record();
    if (sale.verdict.outcome == DocumentOutcome::None)
        throw RegisterError(
            QStringLiteral("the sale %1 was begun on fiscal drive %2").arg(m_id, sale.before.drive),
            QStringLiteral("Refusal"), DocumentOutcome::Unknown);
    std::optional<Output> output = answer();
    if (output)
        output->status = ExitIssued;
    return output;
}

void IdentifiedSale::begin(const DriveMark& before)
{
    m_journal.begin(m_id, m_receipt, before);
}

void IdentifiedSale::settle(const DocumentVerdict& verdict)
{
    m_journal.settle(m_id, verdict);
}

} // namespace frctl
