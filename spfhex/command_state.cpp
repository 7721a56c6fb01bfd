// State, clock, drawer, shift and start of the device.

#include "command.h"

#include "datetimefields.h"
#include "drivertexts.h"
#include "exceptions.h"

#include <logger.h>

namespace spfhex {

StateStatus Command::requestStateStatus() const
{
    logger->debug(QStringLiteral("Запрос статуса состояния ККТ"));
    return StateStatus(sendCommand(RequestStateStatus, {}));
}

void Command::initialize() const
{
    logger->debug(QStringLiteral("Инициализация ККТ"));
    const QList<QByteArray> clock = queryFields(GetDateTime, {});
    if (clock.size() < 2)
        throw FrCommandException(drivertexts::badAnswer());
    sendCommand(Initialize, {clock.at(0), clock.at(1)});
}

void Command::setDateTime(const QDateTime& dateTime) const
{
    logger->debug(QStringLiteral("Установка даты/времени ККТ"));
    sendCommand(SetDateTime, {dateTime.toString(dateFormat()), dateTime.toString(timeFormat())});
}

QDateTime Command::getDateTime() const
{
    logger->debug(QStringLiteral("Получение даты/времени ККТ"));
    return createDateTime(queryFields(GetDateTime, {}));
}

bool Command::isDrawerOpened() const
{
    logger->debug(QStringLiteral("Получение статуса денежного ящика"));
    return sendCommand(GetDrawerState, {}).toInt() != 0;
}

void Command::openShift(const QString& cashierName, const QString& cashierInn) const
{
    logger->debug(QStringLiteral("Открытие смены"));
    sendCommand(OpenShift, {cashierName, cashierInn});
}

void Command::openDrawer() const
{
    logger->debug(QStringLiteral("Открытие денежного ящика"));
    sendCommand(OpenDrawer, {});
}

} // namespace spfhex
