#include "settlement.h"

#include "abstractfrdriver.h"
#include "marknoting.h"
#include "salejournal.h"
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

QList<SettledSale> settlePendingSales(
    AbstractFrDriver& driver, SaleJournal& journal, const RegisterLine& line)
{
    QList<SettledSale> settled;
    const QList<SaleRecord> pending = journal.pending();
    if (pending.isEmpty())
        return settled;
    const QString drive = noteMark(driver, line, DocumentKind::Report).drive;
    for (const SaleRecord& sale : pending) {
        if (sale.before.drive != drive)
            continue;
        const Verdict verdict = settle(driver, sale.before, sale.ours, line);
        journal.settle(sale.id, verdict);
        settled.append({sale.id, verdict});
    }
    return settled;
}

} // namespace sale
