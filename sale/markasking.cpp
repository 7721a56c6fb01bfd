#include "markasking.h"

#include "abstractfrdriver.h"
#include "markentry.h"
#include "markjudgement.h"
#include "markrefusal.h"
#include "receipt.h"
#include "saletr.h"

namespace sale {

namespace {

using receipt::Finding;
using receipt::Receipt;
using receipt::ReceiptItem;

/// Tag 2003: what is to become of the goods.
int plannedStatus(const FrPosition& position, bool isReturn)
{
    const bool isPiece = position.getFrUnit() == 0;
    if (isReturn)
        return isPiece ? 3 : 4;
    return isPiece ? 1 : 2;
}

MarkedPosition markedPosition(const FrPosition& position, bool isReturn)
{
    MarkedPosition marked;
    marked.status = plannedStatus(position, isReturn);
    marked.markingCode = position.getMarkingCode();
    marked.quantity = position.getCount();
    marked.measureUnit = position.getFrUnit();
    return marked;
}

QString reasonOf(int result, Translation said)
{
    const MarkJudgement judgement = judgeMark(result, said);
    const QString text = judgement.standing == MarkJudgement::Standing::Bad
        ? said(QT_TR_NOOP("was found bad by the register: %1"))
        : said(QT_TR_NOOP("was not wholly checked by the register: %1"));
    return text.arg(judgement.bits.join(QStringLiteral("; ")));
}

} // namespace

QList<MarkCheck> askAboutMarks(AbstractFrDriver& driver, const Receipt& receipt)
{
    QList<MarkCheck> checks;
    for (qsizetype index = 0; index < receipt.items.size(); ++index) {
        const ReceiptItem& item = receipt.items.at(index);
        if (!item.isMarked())
            continue;
        const MarkedPosition marked = markedPosition(item.position, receipt.isReturn());
        checks.append({marked.markingCode, driver.checkMarkingCode(marked, true), markPath(item, index)});
    }
    return checks;
}

void judgeMarks(const QList<MarkCheck>& checks, MarkPolicy policy, QList<Finding>& warnings)
{
    QList<Finding> errors;
    QList<QStringList> bits;
    for (const MarkCheck& check : checks) {
        const MarkJudgement judgement = judgeMark(check.result);
        const std::optional<Finding::Severity> severity = severityOf(judgement.standing, policy);
        if (!severity)
            continue;
        const Finding finding{*severity, check.path, check.markingCode, reasonOf(check.result, tr),
            reasonOf(check.result, english)};
        (*severity == Finding::Error ? errors : warnings).append(finding);
        if (*severity == Finding::Error)
            bits.append(judgement.bits);
    }
    if (!errors.isEmpty())
        throw MarkRefusal(errors, bits);
}

void forgetMarks(AbstractFrDriver& driver, const Receipt& receipt)
{
    try {
        if (receipt.hasMarkedItems())
            driver.clearMarkingCodes();
    } catch (...) {
        // The failure that led here is the one to report.
    }
}

} // namespace sale
