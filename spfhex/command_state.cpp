// State, clock, drawer, shift and start of the device.

#include "command.h"

#include "answers.h"
#include "datetimefields.h"
#include "requests.h"

#include <log4qt/logger.h>

namespace spfhex {

StateStatus Command::requestStateStatus() const
{
    logger->debug(QStringLiteral("Запрос статуса состояния ККТ"));
    return StateStatus(sendCommand(RequestStateStatus, {}));
}

void Command::initialize() const
{
    logger->debug(QStringLiteral("Инициализация ККТ"));
    const QList<QByteArray> clock = answer::atLeast(answer::MomentCount, queryFields(GetDateTime, {}));
    sendCommand(
        Initialize, request::Initialize{.date = clock.at(answer::Date), .time = clock.at(answer::Time)});
}

void Command::setDateTime(const QDateTime& dateTime) const
{
    logger->debug(QStringLiteral("Установка даты/времени ККТ"));
    sendCommand(SetDateTime, request::SetDateTime{.moment = dateTime});
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
    sendCommand(OpenShift, request::OpenShift{.cashierName = cashierName, .cashierInn = cashierInn});
}

void Command::openDrawer() const
{
    logger->debug(QStringLiteral("Открытие денежного ящика"));
    sendCommand(OpenDrawer, {});
}

} // namespace spfhex
