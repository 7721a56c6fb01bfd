#pragma once

#include "identifiedsale.h"
#include "options.h"
#include "output.h"

#include <optional>

namespace frctl {

/// A receipt on its way through the journal, and what is said when it was asked for before. Without an id on
/// the command line it has one of its own.
class IdentifiedReceipt
{
public:
    /// Throws UsageError when the id is none or belongs to another receipt, JournalError. The receipt is the
    /// text of its file. The journal of the options must outlive it.
    IdentifiedReceipt(const Options& options, const QByteArray& receipt);

    /// Nothing when the sale is new, was not issued or was not settled. Throws RegisterError when its outcome
    /// is unknown.
    std::optional<Output> answer() const;
    /// The same after the pending sales of the register at hand were settled: one that is left belongs to
    /// another register, which throws RegisterError.
    std::optional<Output> settledAnswer() const;

    sale::IdentifiedSale& identifiedSale() { return *m_sale; }

private:
    std::shared_ptr<AnswerDraft> m_draft;
    std::optional<sale::IdentifiedSale> m_sale;
};

} // namespace frctl
