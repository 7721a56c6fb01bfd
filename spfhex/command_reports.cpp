// Reports, parameters, logo.

#include "command.h"

#include "cp866.h"
#include "frame.h"
#include "frparameter.h"
#include "requests.h"

#include <exception>

#include <log4qt/logger.h>

namespace spfhex {

void Command::printShiftCurrentTotals(const QString& cashierName) const
{
    logger->debug(QStringLiteral("Печать текущих итогов смены"));
    sendCommand(PrintShiftCurrentTotals, request::PrintShiftCurrentTotals{.cashierName = cashierName});
}

void Command::printShiftCloseReport(const QString& cashierName, const QString& cashierInn) const
{
    logger->debug(QStringLiteral("Печать отчета о закрытии смены"));
    sendCommand(PrintShiftCloseReport,
        request::PrintShiftCloseReport{.cashierName = cashierName, .cashierInn = cashierInn});
}

void Command::accountingReport(const QString& cashierName) const
{
    logger->debug(QStringLiteral("Печать отчета о текущем состоянии расчетов"));
    sendCommand(AccountingReport, request::AccountingReport{.cashierName = cashierName});
}

QString Command::getParameter(int field, int row) const
{
    logger->debug(QStringLiteral("Получение параметра %1 %2").arg(field).arg(row));
    try {
        return fromCp866(sendCommand(GetParameter, request::GetParameter{.parameter = field, .row = row}));
    } catch (const std::exception& exception) {
        logger->warn("Ошибка при получении параметра: %1", QString::fromUtf8(exception.what()));
        return {};
    }
}

void Command::setParameter(const FrParameter& parameter) const
{
    logger->debug(QStringLiteral("Установка параметра [%1,%2] = %3")
                      .arg(parameter.getFieldNum())
                      .arg(parameter.getRowNum())
                      .arg(parameter.getValue()));
    sendCommand(SetParameter,
        request::SetParameter{
            .parameter = parameter.getFieldNum(),
            .row = parameter.getRowNum(),
            .value = parameter.getValue(),
        });
}

void Command::setLogo(const QByteArray& bitmap) const
{
    logger->debug(QStringLiteral("Программирование логотипа"));
    sendCommand(SetLogo, request::SetLogo{.size = bitmap.size()}, static_cast<char>(frame::Esc) + bitmap);
}

void Command::clearLogo() const
{
    logger->debug(QStringLiteral("Очистка логотипа"));
    sendCommand(ClearLogo, {});
}

} // namespace spfhex
