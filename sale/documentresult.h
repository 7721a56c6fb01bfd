#pragma once

#include "clockreading.h"
#include "failure.h"
#include "verdict.h"

#include <optional>

namespace sale {

/// How the work on a document ended.
struct DocumentResult
{
    /// Nothing is left to be done: it went well, once, or there was nothing to do.
    bool isDone() const
    {
        return !failure
            && (verdict.outcome == Outcome::None
                || (verdict.outcome == Outcome::Issued && verdict.times == 1));
    }

    Verdict verdict;
    /// Empty when all went well. A document may be issued and have a failure behind it.
    std::optional<Failure> failure;
    /// Behind a document that was made.
    ClockReading clock = {};
    /// In the journal; empty when it was not written there.
    QString id = {};
    /// The journal knew the id as issued or unknown: this is its verdict, and the register was not asked.
    bool isRepeated = false;
    /// False while the verdict may still be found out.
    bool isFinal = true;
    /// Of a document without a trace: the request went out again, and nothing tells how often the register
    /// has heard it. It may have been printed more than once.
    bool isSentAgain = false;
};

} // namespace sale
