#pragma once

#include "clockreading.h"
#include "drivemark.h"
#include "failure.h"
#include "finding.h"
#include "markcheck.h"
#include "movement.h"
#include "verdict.h"

#include <QList>

#include <optional>

namespace sale {

/// What has become of a receipt.
struct IssueResult
{
    bool isIssued() const { return verdict.outcome == Outcome::Issued; }

    /// In the journal; empty without one.
    QString id = {};
    /// None when the work failed before the document was opened: then nothing was begun.
    Verdict verdict;
    /// The journal knew the id as issued or unknown: this is its verdict, and the register was not asked.
    bool isRepeated = false;
    /// Empty when all went well. A receipt may be issued and have a failure behind it: a close whose answer
    /// was lost, or paper that ran out.
    std::optional<Failure> failure;
    /// False while the verdict may still be found out, because the register could not be asked, or because of
    /// an interruption. The host keeps before and ours and calls settle after its next connect, before init.
    bool isFinal = true;
    /// The register before the document, and what the document would move: keep both while the verdict is not
    /// final.
    DriveMark before;
    Movement ours;
    /// The register behind a document that was closed well: the mark before the next one on an exclusive
    /// register.
    std::optional<DriveMark> after;
    /// Behind a document that was closed well.
    ClockReading clock;
    /// Kopecks. The change is what was paid above the total, in cash.
    qint64 total = 0;
    qint64 paid = 0;
    qint64 change = 0;
    /// Of the marked goods, in the order of the receipt.
    QList<MarkCheck> marks;
    /// Of marking codes that were not checked on line or were sold before, and of a journal that does not
    /// keep them. Also when the work failed.
    QList<receipt::Finding> warnings;
};

} // namespace sale
