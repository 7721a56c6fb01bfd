#include "settlement.h"

#include "abstractfrdriver.h"
#include "marknoting.h"
#include "verdicttable.h"

namespace sale {

namespace {

/// A document of ours that a register is asked about.
struct Question
{
    Judgement ask() const
    {
        const Circumstances circumstances{
            isOursAlone, line.isChecked(), !line.isChecked() && !isReceipt(ours.kind)};
        return judge(before, noteMarkAfterFailure(driver, line, ours.kind), ours, circumstances);
    }

    Verdict verdict() const
    {
        const Judgement judgement = ask();
        return judgement.isContradictory ? ask().verdict : judgement.verdict;
    }

    AbstractFrDriver& driver;
    const DriveMark& before;
    const Movement& ours;
    const RegisterLine& line;
    bool isOursAlone;
};

} // namespace

Verdict settle(AbstractFrDriver& driver, const DriveMark& before, const Movement& ours,
    const RegisterLine& line, bool isOursAlone)
{
    const Question question{driver, before, ours, line, isOursAlone};
    const Verdict verdict = question.verdict();
    if (verdict.outcome != Outcome::NotIssued)
        return verdict;
    driver.init();
    return question.verdict();
}

Verdict settle(
    AbstractFrDriver& driver, const DriveMark& before, const Movement& ours, const RegisterLine& line)
{
    return settle(driver, before, ours, line, line.isExclusive);
}

} // namespace sale
