#include "receiptcommands.h"

#include "abstractfrdriver.h"
#include "currenttime.h"
#include "documentoutput.h"
#include "errors.h"
#include "identifiedreceipt.h"
#include "inputfile.h"
#include "mockfactory.h"
#include "money.h"
#include "receiptcheck.h"
#include "receipterror.h"
#include "receiptissuer.h"
#include "review.h"
#include "soldmarks.h"
#include "textcheck.h"
#include "witnesseddocument.h"

#include <memory>

namespace frctl {

namespace {

using receipt::moneyText;
using receipt::Receipt;
using receipt::ReceiptError;
using receipt::roubles;

/// A receipt on its way to the register, with the files that it needs open.
struct Issue
{
    Receipt receipt;
    sale::IssueOptions options;
    std::shared_ptr<Warnings> warnings;
    std::shared_ptr<IdentifiedReceipt> identified;
    Options commandLine;
};

/// What the journal knows of the register may save questions.
sale::IssueOptions withKnownMark(const Issue& issue)
{
    sale::IssueOptions options = issue.options;
    const Options& given = issue.commandLine;
    if (const auto mark = sale::lastKnownMark(given.journal->store(), given.registerName()))
        options.known = sale::KnownMark{*mark};
    return options;
}

Output issue(AbstractFrDriver& driver, const Issue& issue)
{
    if (const std::optional<Output> answer = issue.identified->settledAnswer())
        return *answer;
    const sale::IssueResult result = sale::issueReceipt(driver, issue.receipt, withKnownMark(issue));
    issue.warnings->add(result.warnings);
    AnswerDraft& draft = *issue.commandLine.answer;
    describeReceipt(draft, issue.receipt, result.marks);
    draft.isReplayed = result.isRepeated;
    if (result.failure)
        throwFailure(*result.failure, result.verdict);
    return receiptOutput(result);
}

receipt::CheckOptions checkOptions(const Options& options)
{
    return {options.receiptProtocol(), MockFactory<CurrentTime>::create()->getCurrentDateTime().date(),
        options.drop, options.split};
}

void refuseOtherCommand(const Receipt& receipt, bool isReturn)
{
    if (receipt.isReturn() != isReturn)
        throw ReceiptError(QStringLiteral("type"),
            isReturn ? QStringLiteral("is no return; use the command sell")
                     : QStringLiteral("is a return; use the command refund"));
}

/// The command line goes before the file, and the number of one person is not put to another's name.
FrUser cashierOf(const Options& options, const Receipt& receipt)
{
    FrUser cashier = receipt.cashier.value_or(FrUser());
    if (!options.cashier.name.isEmpty() && options.cashier.name != cashier.name)
        cashier = options.cashier;
    if (!options.cashier.inn.isEmpty())
        cashier.inn = options.cashier.inn;
    return cashier;
}

/// Without what is said of a cashier in whose place the command line puts another.
QList<receipt::Finding> withoutReplaced(
    QList<receipt::Finding> findings, const Receipt& receipt, const FrUser& cashier)
{
    const FrUser named = receipt.cashier.value_or(FrUser());
    findings.removeIf([&](const receipt::Finding& finding) {
        return (finding.path == QStringLiteral("operator.name") && named.name != cashier.name)
            || (finding.path == QStringLiteral("operator.vatin") && named.inn != cashier.inn);
    });
    return findings;
}

/// Those that are errors must be found before anything is sent; as warnings they come with the sale, after
/// what an earlier run left open is settled.
QList<receipt::Finding> soldBefore(const Options& options, const Issue& issue)
{
    return options.strict ? sale::soldMarks(options.journal->store(), issue.receipt, options.id)
                          : QList<receipt::Finding>();
}

Task answered(const Output& answer)
{
    Task task;
    task.alone = [answer] { return answer; };
    return task;
}

Task prepareReceipt(const Options& options, bool isReturn)
{
    const QByteArray text = readFile(options.arguments.constFirst());
    const receipt::CheckedReceipt checked = receipt::checkedReceipt(text, checkOptions(options));
    if (!checked.hasErrors())
        describeReceipt(*options.answer, checked.receipt);
    const auto identified = std::make_shared<IdentifiedReceipt>(options, text);
    // A sale that is done already needs no register, and is no sale of the same goods again.
    if (const std::optional<Output> answer = identified->answer())
        return answered(*answer);
    Issue made{checked.receipt, {options.line(), &identified->identifiedSale(), options.markPolicy},
        options.warnings, identified, options};
    const FrUser cashier = cashierOf(options, made.receipt);
    settleFindings(options, QStringLiteral("ReceiptError"),
        withoutReplaced(checked.findings, made.receipt, cashier) + soldBefore(options, made));
    refuseOtherCommand(made.receipt, isReturn);
    if (cashier.name.isEmpty())
        throw UsageError(QStringLiteral("%1 needs a cashier: --cashier, or \"operator\" in the receipt")
                             .arg(options.command));
    made.receipt.cashier = cashier;
    Task task = documentOnRegister([made](AbstractFrDriver& driver) { return issue(driver, made); });
    task.cashier = cashier;
    return task;
}

Output moveCash(AbstractFrDriver& driver, const Options& options, hw::fr::CheckType type, qint64 sum)
{
    const bool isIn = type == hw::fr::CheckCashIn;
    options.answer->total = sum;
    sale::DocumentSteps steps;
    steps.open = [&] { driver.moneyCheckOpen(type, {}); };
    steps.close = [&] { driver.moneyCheckClose(roubles(sum)); };
    steps.finish = [&] { driver.moneyCheckWaitForPrint(); };
    const sale::DocumentKind kind = isIn ? sale::DocumentKind::CashIn : sale::DocumentKind::CashOut;
    const sale::Verdict verdict = issueWitnessed(driver, options,
        {documentKindName(kind), {{QStringLiteral("sum"), roubles(sum)}}}, {kind, {}, sum}, steps);
    const QString text = isIn ? QStringLiteral("cash in: %1") : QStringLiteral("cash out: %1");
    return {{text.arg(moneyText(sum))}, {}, ExitSuccess, verdict};
}

Task prepareCash(const Options& options, hw::fr::CheckType type)
{
    const QString text = options.arguments.constFirst();
    bool ok = false;
    const double value = text.toDouble(&ok);
    const std::optional<qint64> sum
        = ok && value > 0.0 && value < 1e8 ? receipt::fixedPoint(value, 2) : std::nullopt;
    if (!sum || *sum == 0)
        throw UsageError(QStringLiteral("%1: \"%2\" is not a sum as 100.50").arg(options.command, text));
    options.requireCashier();
    return documentOnRegister([options, type, sum = *sum](
                                  AbstractFrDriver& driver) { return moveCash(driver, options, type, sum); });
}

/// As much of a line, but no half of a character.
qsizetype fittingLength(QStringView line, qsizetype width)
{
    const bool isHalved = width > 1 && width < line.size() && line.at(width).isLowSurrogate();
    return isHalved ? width - 1 : width;
}

/// The register cuts a line that is too long, so it is continued on the next one here.
QStringList fittedLines(const QStringList& lines, unsigned width)
{
    QStringList result;
    for (const QString& line : lines) {
        QStringView rest = line;
        while (width > 0 && rest.size() > width) {
            const qsizetype length = fittingLength(rest, width);
            result.append(rest.first(length).toString());
            rest = rest.sliced(length);
        }
        result.append(rest.toString());
    }
    return result;
}

Output printText(AbstractFrDriver& driver, const Options& options, const QStringList& text)
{
    driver.resetFont();
    const QStringList lines = fittedLines(text, driver.getBandWidthFonts().value(EFrDriver::NormalFont));
    sale::DocumentSteps steps;
    steps.open = [&] { driver.textDocOpen(hw::fr::CheckNonFiscal); };
    steps.fill = [&] { driver.textDocPrint(lines); };
    steps.close = [&] { driver.textDocClose(); };
    steps.cancelAfterClose = options.isHex();
    const sale::Verdict verdict = issueTraceless(driver, options,
        {QStringLiteral("text"), {{QStringLiteral("lines"), static_cast<int>(lines.size())}}}, steps);
    return {{QStringLiteral("%1 lines printed").arg(lines.size())}, {}, ExitSuccess, verdict};
}

} // namespace

Task prepareSell(const Options& options)
{
    return prepareReceipt(options, false);
}

Task prepareRefund(const Options& options)
{
    return prepareReceipt(options, true);
}

Task prepareCashIn(const Options& options)
{
    return prepareCash(options, hw::fr::CheckCashIn);
}

Task prepareCashOut(const Options& options)
{
    return prepareCash(options, hw::fr::CheckCashOut);
}

Task preparePrint(const Options& options)
{
    const QString fileName = options.arguments.constFirst();
    TextCheck texts(options);
    const QStringList lines = texts.printedLines(fileName, readLines(fileName));
    texts.finish();
    return documentOnRegister(
        [options, lines](AbstractFrDriver& driver) { return printText(driver, options, lines); });
}

} // namespace frctl
