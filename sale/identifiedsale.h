#pragma once

#include "markentry.h"
#include "salerecord.h"

namespace sale {

class SaleJournal;

/// A sale that the caller gave an id, so that it can be asked for again without being done twice. All
/// operations throw JournalError when the journal fails.
class IdentifiedSale
{
public:
    /// The receipt is what the caller made it of, so that another one under the same id is noticed: mostly
    /// the JSON text, whose blanks and order of fields do not count; any other bytes are taken as they are.
    /// The journal must outlive the sale. Throws IdConflict when the id belongs to another receipt.
    IdentifiedSale(SaleJournal& journal, const QString& id, const QByteArray& receipt);

    const QString& id() const { return m_id; }
    const SaleJournal& journal() const { return m_journal; }
    /// What is known of the sale from earlier runs: Issued, Unknown, NotIssued (also for one that is new), or
    /// None for one that was begun and not settled. After settlePendingSales, None says that it was begun on
    /// another fiscal drive.
    SaleRecord record() const;
    /// What a host may act on: only NotIssued may be done. One that was begun and not settled is Unknown.
    Verdict verdict() const;

    /// Before the document is opened.
    void begin(const DriveMark& before, const MarkEntry& marks = {}, const Movement& ours = {});
    /// When the outcome is known.
    void settle(const Verdict& verdict);

private:
    SaleJournal& m_journal;
    const QString m_id;
    const QByteArray m_receipt;
};

} // namespace sale
