// Counters and the registers of a shift.

#include "frspf.h"

#include <centredline.h>
#include <checktypename.h>
#include <counterlines.h>
#include <decimals.h>
#include <drivertexts.h>

namespace spfxml {

namespace {

constexpr auto sales = EFrDriver::SaleCounters;
constexpr auto returns = EFrDriver::ReturnCounters;

KkmRegisterEnd::ByPaymentKind byPaymentKind(const QMap<int, double>& payments)
{
    KkmRegisterEnd::ByPaymentKind values;
    for (size_t kind = 0; kind < values.size(); ++kind)
        values.at(kind) = payments.value(static_cast<int>(kind));
    return values;
}

} // namespace

EFrDriver::RequisiteTypes FrSpf::getCountersTypeRequisite(hw::fr::CheckType type)
{
    if (type == hw::fr::CheckSale)
        return sales;
    if (type == hw::fr::CheckSaleReturn)
        return returns;
    throw FrCommandException(drivertexts::unsupportedCheckType());
}

bool FrSpf::isShiftClosedForCounters()
{
    isPortReady();
    if (command->getShiftStatus().opened)
        return false;
    logger->error(QStringLiteral("Смена закрыта"));
    return true;
}

QMap<int, double> FrSpf::getCheckCounters(hw::fr::CheckType type)
{
    const EFrDriver::RequisiteTypes requisite = getCountersTypeRequisite(type);
    logger->info(QStringLiteral("Получение счетчиков чека %1 (реквизит %2)")
                     .arg(checkTypeNameGenitive(type))
                     .arg(static_cast<int>(requisite)));
    if (isShiftClosedForCounters())
        return {};
    return command->getCheckCounters(requisite).payments;
}

MoneyCounters FrSpf::getMoneyCounters(hw::fr::CheckType type)
{
    logger->info(QStringLiteral("Запрос счетчиков чека: ") + checkTypeName(type));
    if (isShiftClosedForCounters())
        return {};
    const MoneyCounters counters = command->getMoneyCounters(type);
    logger->debug(
        QStringLiteral("операций - %1, сумма - %2").arg(counters.count).arg(moneyText(counters.sum)));
    return counters;
}

QStringList FrSpf::getCountersDescription()
{
    return withLoggedFailure<BasicException>([this] {
        logger->info(QStringLiteral("Получение описания счетчиков"));
        isPortReady();
        const QMap<hw::fr::CheckType, QString> headings{
            {hw::fr::CheckSale, QStringLiteral("Приход:")},
            {hw::fr::CheckSaleReturn, QStringLiteral("Возврат прихода:")},
        };
        const auto width = static_cast<int>(deviceInfo.getBandWidth());
        QStringList lines{centredLine(QStringLiteral("Суммы в ФП"), QLatin1Char('-'), width)};
        for (auto heading = headings.cbegin(); heading != headings.cend(); ++heading) {
            lines.append(heading.value());
            lines.append(counterLines(getCheckCounters(heading.key())));
        }
        logger->info(QStringLiteral("Описание счетчиков получено"));
        return lines;
    });
}

KkmRegisterBeg FrSpf::getKkmRegisterBeg()
{
    return withCopiedFailure([this] {
        logger->info(QStringLiteral("Получение счетчиков ККМ на начало смены"));
        isPortReady();
        const KktCounters counters = command->getCheckCounters(sales);
        const double cashInDrawer = command->getCashInDrawer();
        const ShiftStatus shift = command->getShiftStatus();
        const SpfStatus status = command->getStatus();

        KkmRegisterBeg registers = registersWithIdentity();
        registers.totalSales = counters.totalSum;
        registers.cashInDrawer = cashInDrawer;
        registers.shiftNumber = shift.opened ? shift.shiftNumber : nextShift(shift.shiftNumber);
        registers.registrationNumber = status.registrationNumber;
        registers.fnNumber = status.fn.fnNumber;
        logDone();
        return registers;
    });
}

KkmRegisterEnd FrSpf::getKkmRegisterEnd()
{
    return withCopiedFailure([this] {
        logger->info(QStringLiteral("Получение счетчиков ККМ на конец смены"));
        isPortReady();
        const KktCounters saleCounters = command->getCheckCounters(sales);
        const KktCounters returnCounters = command->getCheckCounters(returns);
        const MoneyCounters cashIn = getMoneyCounters(hw::fr::CheckCashIn);
        const MoneyCounters cashOut = getMoneyCounters(hw::fr::CheckCashOut);
        const double cashInDrawer = command->getCashInDrawer();

        KkmRegisterEnd registers;
        registers.totalSales = saleCounters.totalSum;
        registers.cashInDrawer = cashInDrawer;
        registers.shiftRevenue = saleCounters.shiftSum - returnCounters.shiftSum;
        registers.saleCount = saleCounters.count;
        registers.saleSum = saleCounters.shiftSum;
        registers.salePayments = byPaymentKind(saleCounters.payments);
        registers.returnCount = returnCounters.count;
        registers.returnSum = returnCounters.shiftSum;
        registers.returnPayments = byPaymentKind(returnCounters.payments);
        registers.paymentNames = {QStringLiteral("Наличными"), QStringLiteral("Электронными"),
            QStringLiteral("Предварительная оплата (аванс)"), QStringLiteral("Последующая оплата (кредит)"),
            QStringLiteral("Иная форма оплаты (встречное предоставление)")};
        registers.cashInSum = cashIn.sum;
        registers.cashInCount = cashIn.count;
        registers.cashOutSum = cashOut.sum;
        registers.cashOutCount = cashOut.count;
        return registers;
    });
}

} // namespace spfxml
