// Reports and counters.

#include "frspf.h"

#include "answers.h"
#include "centredline.h"
#include "checktypename.h"
#include "command.h"
#include "counterlines.h"
#include "driverlogger.h"
#include "exceptions.h"
#include "protocol.h"

namespace spfhex {

namespace {

KkmRegisterEnd::ByPaymentKind byPaymentKind(const QList<double>& sums)
{
    KkmRegisterEnd::ByPaymentKind values;
    for (qsizetype kind = 0; kind < protocol::paymentKindCount; ++kind)
        values.at(static_cast<size_t>(kind)) = sums.at(kind);
    return values;
}

} // namespace

QJsonObject FrSpf::zReport()
{
    // The Latin "c" in this text is meant to stay.
    logger->info(QStringLiteral("Снятие суточного отчета c гашением"));
    isPortReady();
    if (command->requestStateStatus().isShiftOpened()) {
        command->printShiftCloseReport(cashierName, cashierInn);
        logDone();
    } else {
        logger->warn(QStringLiteral("Смена не открыта"));
    }
    return {};
}

QJsonObject FrSpf::xReport()
{
    logger->info(QStringLiteral("Снятие суточного отчета без гашения"));
    isPortReady();
    command->printShiftCurrentTotals(cashierName);
    logDone();
    return {};
}

void FrSpf::accountingReport()
{
    logger->info(QStringLiteral("Печать отчета о текущем состоянии расчетов"));
    isPortReady();
    if (command->requestStateStatus().isShiftOpened())
        throw FrCommandException(QStringLiteral("Смена должна быть закрыта"));
    command->accountingReport(cashierName);
    logDone();
}

QMap<int, double> FrSpf::getCheckCounters(hw::fr::CheckType type)
{
    logger->info(QStringLiteral("Запрос счетчиков чека: (%1) - %2")
                     .arg(static_cast<int>(type))
                     .arg(checkTypeName(type)));
    isPortReady();
    QList<double> sums;
    if (type == hw::fr::CheckSale)
        sums = command->getSaleCounters();
    else if (type == hw::fr::CheckSaleReturn)
        sums = command->getBackCounters();
    QMap<int, double> counters;
    for (qsizetype kind = 0; kind < sums.size(); ++kind)
        counters.insert(static_cast<int>(kind), sums.at(kind));
    return counters;
}

MoneyCounters FrSpf::getMoneyCounters(hw::fr::CheckType type)
{
    logger->info(QStringLiteral("Запрос счетчиков чека: ") + checkTypeName(type));
    isPortReady();
    const QList<int> counts = answer::atLeast(answer::DocumentCounterCount, command->getDocumentCounters());
    const QList<double> sums = answer::atLeast(answer::DocumentSumCount, command->getDocumentSums());
    // Every type but a deposit is meant to read as a withdrawal.
    if (type == hw::fr::CheckCashIn)
        return {counts.at(answer::CashIns), sums.at(answer::CashInsSum)};
    return {counts.at(answer::CashOuts), sums.at(answer::CashOutsSum)};
}

QStringList FrSpf::countersLines(hw::fr::CheckType type)
{
    QStringList lines{checkTypeName(type) + QLatin1Char(':')};
    const QMap<int, double> counters = getCheckCounters(type);
    lines.append(counterLines(counters));
    return lines;
}

QStringList FrSpf::getCountersDescription()
{
    logger->info(QStringLiteral("Получение описания счетчиков"));
    try {
        isPortReady();
        const auto width = static_cast<int>(deviceInfo.getBandWidth());
        QStringList lines{centredLine(QStringLiteral("Счетчики"), QLatin1Char('-'), width)};
        lines.append(countersLines(hw::fr::CheckSale));
        lines.append(countersLines(hw::fr::CheckSaleReturn));
        logger->info(QStringLiteral("Описание счетчиков получено"));
        return lines;
    } catch (const FrCommandException& exception) {
        logger->error(exception.tr().ru());
        throw;
    }
}

KkmRegisterBeg FrSpf::getKkmRegisterBeg()
{
    logger->info(QStringLiteral("Получение счетчиков ККМ на начало смены"));
    isPortReady();
    KkmRegisterBeg registers = registersWithIdentity();
    registers.cashInDrawer = command->getDrawerSum();
    // One more in any case: whether the shift is open is meant to be left out of account here.
    registers.shiftNumber = nextShift(command->getCurrentShiftNumber());
    registers.registrationNumber = command->getRegistrationNumber();
    registers.fnNumber = command->getFnNumber();
    logDone();
    return registers;
}

KkmRegisterEnd FrSpf::getKkmRegisterEnd()
{
    logger->info(QStringLiteral("Получение счетчиков ККМ на конец смены"));
    isPortReady();
    const QList<int> counts = answer::atLeast(answer::DocumentCounterCount, command->getDocumentCounters());
    const QList<double> sums = answer::atLeast(answer::DocumentSumCount, command->getDocumentSums());
    const QList<double> sales = answer::atLeast(protocol::paymentKindCount, command->getSaleCounters());
    const QList<double> returns = answer::atLeast(protocol::paymentKindCount, command->getBackCounters());
    const double cashInDrawer = command->getDrawerSum();

    KkmRegisterEnd registers;
    registers.cashInDrawer = cashInDrawer;
    registers.saleCount = counts.at(answer::Sales);
    registers.saleSum = sums.at(answer::SalesSum);
    registers.salePayments = byPaymentKind(sales);
    registers.returnCount = counts.at(answer::SaleReturns);
    registers.returnSum = sums.at(answer::SaleReturnsSum);
    registers.returnPayments = byPaymentKind(returns);
    for (int kind = 0; kind < protocol::paymentKindCount; ++kind)
        registers.paymentNames.at(static_cast<size_t>(kind))
            = command->getParameter(protocol::PaymentNamesParameter, kind);
    registers.cashInSum = sums.at(answer::CashInsSum);
    registers.cashInCount = counts.at(answer::CashIns);
    registers.cashOutSum = sums.at(answer::CashOutsSum);
    registers.cashOutCount = counts.at(answer::CashOuts);
    logDone();
    return registers;
}

} // namespace spfhex
