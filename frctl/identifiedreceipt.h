#pragma once

#include "identifiedsale.h"
#include "output.h"
#include "salejournal.h"

#include <optional>

namespace frctl {

/// A receipt with an id on the command line, and what is said when it was asked for before.
class IdentifiedReceipt
{
public:
    /// Throws UsageError when the id belongs to another receipt, JournalError. The receipt is the text of its
    /// file.
    IdentifiedReceipt(const QString& journalFile, const QString& id, const QByteArray& receipt);

    /// Nothing when the sale is new, was not issued or was not settled. Throws RegisterError when its outcome
    /// is unknown.
    std::optional<Output> answer() const;
    /// The same after the pending sales of the register at hand were settled: one that is left belongs to
    /// another register, which throws RegisterError.
    std::optional<Output> settledAnswer() const;

    sale::IdentifiedSale& identifiedSale() { return *m_sale; }

private:
    sale::SaleJournal m_journal;
    std::optional<sale::IdentifiedSale> m_sale;
};

} // namespace frctl
