// Reports, parameters, logo.

#include "command.h"

#include "cp866.h"
#include "frame.h"
#include "frparameter.h"
#include "frutils.h"

#include <exception>

#include <logger.h>

namespace spfhex {

void Command::printShiftCurrentTotals(const QString& cashierName) const
{
    logger->debug(QStringLiteral("Печать текущих итогов смены"));
    sendCommand(PrintShiftCurrentTotals, {FrUtils::to866(cashierName)});
}

void Command::printShiftCloseReport(const QString& cashierName, const QString& cashierInn) const
{
    logger->debug(QStringLiteral("Печать отчета о закрытии смены"));
    sendCommand(PrintShiftCloseReport, {FrUtils::to866(cashierName), cashierInn});
}

void Command::accountingReport(const QString& cashierName) const
{
    logger->debug(QStringLiteral("Печать отчета о текущем состоянии расчетов"));
    sendCommand(AccountingReport, {toCp866(cashierName)});
}

QString Command::getParameter(int field, int row) const
{
    logger->debug("Получение параметра %1 %2", field, row);
    try {
        return fromCp866(sendCommand(GetParameter, {field, row}));
    } catch (const std::exception& exception) {
        logger->warn("Ошибка при получении параметра: %1", QString::fromUtf8(exception.what()));
        return {};
    }
}

void Command::setParameter(const FrParameter& parameter) const
{
    logger->debug("Установка параметра [%1,%2] = %3", parameter.getFieldNum(), parameter.getRowNum(),
        parameter.getValue());
    // The device reads values as UTF-8 though it gives them in CP866; that is meant to stay.
    sendCommand(SetParameter,
        {static_cast<int>(parameter.getFieldNum()), static_cast<int>(parameter.getRowNum()),
            parameter.getValue()});
}

void Command::setLogo(const QByteArray& bitmap) const
{
    logger->debug(QStringLiteral("Программирование логотипа"));
    sendCommand(SetLogo, {QVariant::fromValue(bitmap.size())}, static_cast<char>(frame::Esc) + bitmap);
}

void Command::clearLogo() const
{
    logger->debug(QStringLiteral("Очистка логотипа"));
    sendCommand(ClearLogo, {});
}

} // namespace spfhex
