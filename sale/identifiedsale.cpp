#include "identifiedsale.h"

#include "idconflict.h"
#include "salejournal.h"

#include <QCryptographicHash>
#include <QJsonDocument>

namespace sale {

namespace {

/// Blanks and the order of the fields make no other receipt.
QByteArray fingerprint(const QByteArray& receipt)
{
    const QJsonDocument json = QJsonDocument::fromJson(receipt);
    const QByteArray plain = json.isNull() ? receipt : json.toJson(QJsonDocument::Compact);
    return QCryptographicHash::hash(plain, QCryptographicHash::Sha256).toHex();
}

} // namespace

IdentifiedSale::IdentifiedSale(SaleJournal& journal, const QString& id, const QByteArray& receipt)
    : m_journal(journal)
    , m_id(id)
    , m_receipt(fingerprint(receipt))
{
    if (record().receipt != m_receipt)
        throw IdConflict(id);
}

SaleRecord IdentifiedSale::record() const
{
    // A sale that is not in the journal is as one that was not issued.
    return m_journal.find(m_id).value_or(SaleRecord{m_id, m_receipt, Outcome::NotIssued, {}});
}

Verdict IdentifiedSale::verdict() const
{
    const Verdict known = record().verdict;
    return known.outcome == Outcome::None ? Outcome::Unknown : known;
}

void IdentifiedSale::begin(const DriveMark& before, const MarkEntry& marks, const Movement& ours)
{
    m_journal.begin(m_id, m_receipt, before, marks, ours);
}

void IdentifiedSale::settle(const Verdict& verdict)
{
    m_journal.settle(m_id, verdict);
}

} // namespace sale
