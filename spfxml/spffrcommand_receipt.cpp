// Documents: receipts, money operations, texts.

#include "names.h"
#include "print.h"
#include "spffrcommand.h"

#include <decimals.h>
#include <frposition.h>
#include <frprintdata.h>
#include <log4qt/logger.h>

#include <QDomDocument>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

constexpr int receiptAttempts = 1;
// A smaller change is the rest of a calculation with binary fractions.
constexpr double changeLimit = 0.005;

enum PaymentKind { Cash = 0, Electronic = 1, Prepayment = 2, Credit = 3, OtherConsideration = 4 };

double paidSum(const QMap<int, double>& payments)
{
    double sum = 0.0;
    for (int kind = Cash; kind <= OtherConsideration; ++kind)
        sum += payments.value(kind);
    return sum;
}

RequestParams paymentParam(const QMap<int, double>& payments, PaymentKind kind, EFrDriver::RequisiteTypes tag)
{
    return {ParamType::Sum, tag, payments.value(kind)};
}

// Purchases and their returns go out as a sale, too: it is meant.
int settlementType(hw::fr::CheckType type)
{
    return type == hw::fr::CheckSaleReturn ? 2 : 1;
}

QString joined(const QList<QString>& lines)
{
    return lines.join(QLatin1Char('\n'));
}

RequestParams headerText(const QList<FrPrintData>& printData)
{
    return {ParamType::Text, names::field::headerText, joined(SpfFrCommand::getTextLines(printData))};
}

} // namespace

void SpfFrCommand::checkClose(hw::fr::CheckType type, const QMap<int, double>& payments,
    const QList<FrPosition>& positions, const QList<FrPrintData>& printData,
    const QList<RequestParams>& requisites) const
{
    logger->debug(QStringLiteral("Закрытие чека"));
    double total = 0.0;
    QList<RequestParams> items;
    items.reserve(positions.size());
    for (const FrPosition& position : positions) {
        items.append({ParamType::Structure, EFrDriver::Item, getPositionRequisites(position, type)});
        total += position.getPossumWithDisc();
    }
    const double change = paidSum(payments) - total;

    QList<RequestParams> params{{ParamType::StructureList, EFrDriver::Item, items}};
    params.append(receiptFields(type, payments, change));
    params.append(requisites);
    if (!printData.isEmpty())
        params.append(headerText(printData));
    // The footer is meant to stand on every receipt, with a change of nothing or less, too.
    params.append(
        {ParamType::Text, names::field::footer, QStringLiteral("СДАЧА: %1").arg(moneyText(change))});
    if (!tailText.isEmpty())
        params.append({ParamType::Text, names::field::textAfterDocument, tailText});
    requestData(ECommandCode::CloseReceipt, {ParamType::Structure, names::document::receipt, params},
        receiptAttempts);
}

QList<RequestParams> SpfFrCommand::receiptFields(
    hw::fr::CheckType type, const QMap<int, double>& payments, double change) const
{
    double cash = payments.value(Cash);
    // An overpaid card makes the cash negative: it is meant, the register judges it.
    if (change > changeLimit)
        cash -= change;
    QList<RequestParams> params{
        {ParamType::Sum, EFrDriver::CashSum, cash},
        paymentParam(payments, Electronic, EFrDriver::ElectronicSum),
        paymentParam(payments, Prepayment, EFrDriver::PrepaymentSum),
        paymentParam(payments, Credit, EFrDriver::CreditSum),
        paymentParam(payments, OtherConsideration, EFrDriver::OtherSum),
        cashierParam(),
        {ParamType::Integer, EFrDriver::SettlementType, settlementType(type)},
        {ParamType::Integer, names::field::doNotPrint, printMode == CheckPrintNone ? 1 : 0},
    };
    // It is meant that a requisite of the host may bring the same tag a second time.
    if (!cashierInn.isEmpty())
        params.append({ParamType::Text, EFrDriver::CashierInn, cashierInn});
    return params;
}

void SpfFrCommand::moneyOperation(
    hw::fr::CheckType type, double sum, const QList<FrPrintData>& printData) const
{
    logger->debug(QStringLiteral("Внесение/изъятие"));
    const int operation = type == hw::fr::CheckCashOut ? 2 : 1;
    QList<RequestParams> params{
        cashierParam(),
        {ParamType::Sum, names::field::cashSum, sum},
        {ParamType::Integer, names::field::moneyOperationType, operation},
    };
    if (!printData.isEmpty())
        params.append(headerText(printData));
    sendStructure(ECommandCode::MoneyOperation, names::document::moneyOperation, params);
}

void SpfFrCommand::nonFiscalDocument(const QList<FrPrintData>& printData) const
{
    logger->debug(QStringLiteral("Печать нефискального документа"));
    sendStructure(ECommandCode::NonFiscalDocument, names::document::nonFiscal,
        {{ParamType::Text, names::field::nonFiscalText, joined(getTextLines(printData))}});
}

QList<QString> SpfFrCommand::getTextLines(const QList<FrPrintData>& printData)
{
    return Print(printData).getResult();
}

} // namespace spfxml
