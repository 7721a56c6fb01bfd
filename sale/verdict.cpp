#include "verdict.h"

#include "drivemark.h"

namespace sale {

Verdict verdictOf(const DriveMark& before, const DriveMark& after)
{
    // A drive in use has at least the document of its registration; a driver reads an answer that it does not
    // understand as zero.
    if (before.lastDocument == 0 || after.lastDocument == 0 || before.drive != after.drive)
        return Outcome::Unknown;
    if (after.lastDocument == before.lastDocument)
        return Outcome::NotIssued;
    if (after.lastDocument == before.lastDocument + 1)
        return {Outcome::Issued, after.lastDocument};
    return Outcome::Unknown;
}

QString verdictText(const Verdict& verdict)
{
    const QString text = outcomeText(verdict.outcome);
    return verdict.number == 0 ? text : QStringLiteral("document %1: ").arg(verdict.number) + text;
}

} // namespace sale
