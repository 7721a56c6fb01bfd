#include "verdict.h"

#include "saletr.h"

namespace sale {

QString verdictText(const Verdict& verdict)
{
    QString text = outcomeText(verdict.outcome);
    if (verdict.outcome == Outcome::Issued && verdict.times > 1)
        text = tr("the document was issued %1 times: if it moved cash, take back %2 of them")
                   .arg(verdict.times)
                   .arg(verdict.times - 1);
    return verdict.number == 0 ? text : tr("document %1: ").arg(verdict.number) + text;
}

} // namespace sale
