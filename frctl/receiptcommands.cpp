#include "receiptcommands.h"

#include "documentarguments.h"
#include "documentoutput.h"
#include "errors.h"
#include "frctltr.h"
#include "identifiedreceipt.h"
#include "inputfile.h"
#include "judgedreceipt.h"
#include "money.h"
#include "receipterror.h"
#include "receipttexts.h"
#include "soldmarks.h"
#include "textcheck.h"
#include "witnesseddocument.h"

#include <optional>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::Receipt;

/// A receipt on its way to the register, with the text that it was made of.
struct Issue
{
    Receipt receipt;
    QByteArray text;
    Options options;
};

Output issue(sale::CashDesk& desk, const Issue& issue)
{
    const Options& options = issue.options;
    const sale::IssueResult result = desk.issue(options.id, issue.receipt, issue.text);
    options.warnings->add(result.warnings);
    options.answer->id = result.id;
    describeReceipt(*options.answer, issue.receipt, result.marks);
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    return result.isRepeated ? settledAnswer(options, result) : receiptOutput(result);
}

/// Those that are errors must be found before anything is sent; as warnings they come with the sale,
/// after what an earlier run left open is settled.
QList<receipt::Finding> soldBefore(const Options& options, const Receipt& receipt)
{
    return options.strict ? sale::soldMarks(options.journal->store(), receipt, options.id)
                          : QList<receipt::Finding>();
}

Output moveCash(sale::CashDesk& desk, const Options& options, bool isIn, qint64 sum)
{
    options.answer->total = sum;
    const sale::Verdict verdict = verdictOf(options, isIn ? desk.cashIn(sum) : desk.cashOut(sum));
    const QString text = isIn ? tr("cash in: %1") : tr("cash out: %1");
    return {{text.arg(moneyText(sum))}, {}, ExitSuccess, verdict};
}

Task prepareCash(const Options& options, bool isIn)
{
    const qint64 sum = cashArgument(options);
    options.requireCashierOption();
    return onDesk([options, isIn, sum](sale::CashDesk& desk) { return moveCash(desk, options, isIn, sum); });
}

Output printText(sale::CashDesk& desk, const Options& options, const QStringList& lines)
{
    return {{tr("%1 lines printed").arg(lines.size())}, {}, ExitSuccess,
        verdictOf(options, desk.printText(lines))};
}

} // namespace

Task prepareReceipt(const Options& options)
{
    const QByteArray text = oneReceipt(options);
    const JudgedReceipt judged = judgedReceipt(text, options, options.receiptProtocol());
    if (!judged.checked.hasErrors())
        describeReceipt(*options.answer, judged.checked.receipt);
    // A sale that is done already needs no register, and is no sale of the same goods again.
    if (const std::optional<Output> answer = knownAnswer(options, text)) {
        // A sale that is done is no answer to refund.
        refuseOtherCommand(options, judged.checked.receipt.isReturn());
        return alone([answer] { return *answer; });
    }
    Issue made{judged.checked.receipt, text, options};
    settleFindings(
        options, QStringLiteral("ReceiptError"), judged.checked.findings + soldBefore(options, made.receipt));
    refuseOtherCommand(options, made.receipt.isReturn());
    made.receipt.cashier = receiptCashier(options, judged);
    return onDesk([made](sale::CashDesk& desk) { return issue(desk, made); });
}

Task prepareCashIn(const Options& options)
{
    return prepareCash(options, true);
}

Task prepareCashOut(const Options& options)
{
    return prepareCash(options, false);
}

Task preparePrint(const Options& options)
{
    const QString fileName = options.arguments.constFirst();
    TextCheck texts(options);
    const QStringList lines = texts.printedLines(fileName, readLines(fileName));
    texts.finish();
    return onDesk([options, lines](sale::CashDesk& desk) { return printText(desk, options, lines); });
}

} // namespace frctl
