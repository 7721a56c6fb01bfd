#pragma once

#include "outcome.h"

#include <QtGlobal>

namespace sale {

struct DriveMark;

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
};

/// What the drive's marks before and after a close say of the document: Issued when the number moved by one,
/// NotIssued when it did not move, Unknown in all other cases.
Verdict verdictOf(const DriveMark& before, const DriveMark& after);

/// The sentence of the outcome, with the number in front where there is one; empty for None.
QString verdictText(const Verdict& verdict);

} // namespace sale
