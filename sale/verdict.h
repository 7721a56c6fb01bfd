#pragma once

#include "outcome.h"

#include <QtGlobal>

namespace sale {

/// The outcome, and the number of the document in the fiscal drive, 0 where it is not known or has none.
struct Verdict
{
    // Not explicit: most outcomes have no number.
    Verdict(Outcome documentOutcome = Outcome::None, quint32 documentNumber = 0)
        : outcome(documentOutcome)
        , number(documentNumber)
    {
    }

    bool operator==(const Verdict&) const = default;

    Outcome outcome;
    quint32 number;
    /// False for a number that was counted on from the one before the document, and not read after it.
    bool isNumberRead = true;
    /// How often an issued document was issued. More than once when the driver sent its request again while
    /// the register, whose answer was lost, had already done it: all but one are to be taken back.
    int times = 1;
};

/// The sentence of the outcome, with the number in front where there is one; empty for None.
QString verdictText(const Verdict& verdict);

} // namespace sale
