#include "judgedreceipt.h"

#include "cashiername.h"
#include "currenttime.h"
#include "errors.h"
#include "frctltr.h"
#include "mockfactory.h"

#include <optional>

namespace frctl {

namespace {

using receipt::Receipt;

receipt::CheckOptions checkOptions(const Options& options, receipt::Protocol protocol)
{
    return {protocol, MockFactory<CurrentTime>::create()->getCurrentDateTime().date(), options.drop,
        options.split};
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

/// Of one that the command line puts in the place of the receipt's.
QList<receipt::Finding> replacingFindings(
    const Receipt& receipt, const FrUser& cashier, receipt::Protocol protocol)
{
    if (cashier.name == receipt.cashier.value_or(FrUser()).name)
        return {};
    const std::optional<QString> warning = receipt::shiftCashierWarning(cashier.name, protocol);
    return warning ? QList<receipt::Finding>{{receipt::Finding::Warning, QStringLiteral("--cashier"),
               cashier.name, *warning}}
                   : QList<receipt::Finding>();
}

} // namespace

JudgedReceipt judgedReceipt(const QByteArray& text, const Options& options, receipt::Protocol protocol)
{
    JudgedReceipt judged{receipt::checkedReceipt(text, checkOptions(options, protocol)), {}};
    receipt::CheckedReceipt& checked = judged.checked;
    judged.cashier = cashierOf(options, checked.receipt);
    checked.findings = withoutReplaced(checked.findings, checked.receipt, judged.cashier)
        + replacingFindings(checked.receipt, judged.cashier, protocol);
    return judged;
}

FrUser receiptCashier(const Options& options, const JudgedReceipt& judged)
{
    if (judged.cashier.name.isEmpty())
        throw UsageError(
            tr("%1 needs a cashier: --cashier, or \"operator\" in the receipt").arg(options.command));
    return judged.cashier;
}

} // namespace frctl
