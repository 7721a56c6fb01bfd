#pragma once

#include "command.h"
#include "salejournal.h"

namespace frctl {

/// A sale that the caller gave an id, so that it can be asked for again without being done twice.
class IdentifiedSale
{
public:
    /// Throws UsageError when the id belongs to another receipt. The receipt is the text of its file.
    IdentifiedSale(const QString& journalFile, const QString& id, const QByteArray& receipt);

    /// What is known of the sale from earlier runs: nothing when it is new, was not issued or was not
    /// settled. Throws RegisterError when its outcome is unknown.
    std::optional<Output> answer() const;
    /// The same after the pending sales of the register at hand were settled: one that is left belongs to
    /// another register, which throws RegisterError.
    std::optional<Output> settledAnswer() const;

    void begin(const DriveMark& before);
    void settle(const DocumentVerdict& verdict);

private:
    SaleRecord record() const;

    SaleJournal m_journal;
    QString m_id;
    QByteArray m_receipt;
};

} // namespace frctl
