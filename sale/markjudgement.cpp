#include "markjudgement.h"

#include "saletr.h"

#include <algorithm>

namespace sale {

namespace {

using Standing = MarkJudgement::Standing;
using receipt::Finding;

// Bits of tag 2106.
enum ResultBit { KeyChecked = 1, KeyGood = 2, OnlineChecked = 4, OnlineGood = 8, Autonomous = 16 };
constexpr int allBits = KeyChecked | KeyGood | OnlineChecked | OnlineGood | Autonomous;

struct Check
{
    int done;
    int good;
    const char* doneBad;
    const char* doneGood;
    const char* notDone;
};

// A bit of the result counts only with the bit of its check.
constexpr Check checks[] = {
    {KeyChecked, KeyGood, QT_TR_NOOP("verification key wrong"), QT_TR_NOOP("verification key right"),
        QT_TR_NOOP("verification key not checked by the fiscal drive")},
    {OnlineChecked, OnlineGood, QT_TR_NOOP("planned status of the goods wrong on line"),
        QT_TR_NOOP("planned status of the goods right on line"),
        QT_TR_NOOP("planned status of the goods not checked on line")},
};

const char* wordsOf(const Check& check, int result)
{
    if ((result & check.done) == 0)
        return check.notDone;
    return (result & check.good) == 0 ? check.doneBad : check.doneGood;
}

Standing standingOf(const Check& check, int result)
{
    if ((result & check.done) == 0)
        return Standing::Unchecked;
    return (result & check.good) == 0 ? Standing::Bad : Standing::Good;
}

} // namespace

MarkJudgement judgeMark(int result, Translation said)
{
    const int bits = result < 0 ? 0 : result & allBits;
    // A bit that nobody knows may take back what the others say, but nothing makes a bad code good.
    MarkJudgement judgement{bits == result ? Standing::Good : Standing::Unchecked, {}};
    for (const Check& check : checks) {
        judgement.standing = std::max(judgement.standing, standingOf(check, bits));
        judgement.bits.append(said(wordsOf(check, bits)));
    }
    if ((bits & Autonomous) != 0)
        judgement.bits.append(said(QT_TR_NOOP("checked by a register in autonomous mode")));
    return judgement;
}

std::optional<Finding::Severity> severityOf(Standing standing, MarkPolicy policy)
{
    if (standing == Standing::Good)
        return std::nullopt;
    const bool isError
        = policy == MarkPolicy::Strict || (policy == MarkPolicy::Warn && standing == Standing::Bad);
    return isError ? Finding::Error : Finding::Warning;
}

} // namespace sale
