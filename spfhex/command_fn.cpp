// Queries of the fiscal drive, registration.

#include "command.h"

#include "answers.h"
#include "datetimefields.h"
#include "frame.h"
#include "frutils.h"
#include "requests.h"

#include <log4qt/logger.h>

#include <QTimeZone>

namespace spfhex {

QByteArray Command::askFn(protocol::FnQuery query) const
{
    return sendCommand(GetFnData, request::GetFnData{.query = query});
}

FnStatusInfo Command::getFnState() const
{
    logger->debug(QStringLiteral("Получение статуса ФН"));
    const QList<QByteArray> fields = answer::atLeast(answer::FnStateCount, queryFields(GetFnData, {}));
    FnStatusInfo state;
    state.lifePhase = static_cast<quint8>(fields.at(answer::LifePhase).toUInt());
    state.currentDocType = static_cast<quint8>(fields.at(answer::CurrentDocument).toUInt());
    state.hasDocData = fields.at(answer::HasDocumentData).toUInt() != 0;
    state.isShiftOpen = fields.at(answer::ShiftOpen).toUInt() != 0;
    state.warningFlags = static_cast<quint8>(fields.at(answer::WarningFlags).toUInt());
    return state;
}

quint32 Command::getLastFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера последнего ФД"));
    return askFn(protocol::LastFdNumberQuery).toUInt();
}

QDateTime Command::getLastFdDateTime() const
{
    logger->debug(QStringLiteral("Получение даты/времени последнего ФД"));
    return createDateTime(frame::fields(askFn(protocol::LastFdDateTimeQuery)));
}

QString Command::getFnNumber() const
{
    logger->debug(QStringLiteral("Получение заводского номера ФН"));
    return QString::fromUtf8(askFn(protocol::FnNumberQuery));
}

QDate Command::getFnExpirationDate() const
{
    logger->debug(QStringLiteral("Получение даты срока действия ФН"));
    const QByteArray field = frame::fields(askFn(protocol::FnExpirationDateQuery)).constFirst();
    // In UTC: a midnight of the local zone need not exist on that day of the past century.
    QDateTime expiration(
        QDate::fromString(QString::fromLatin1(field), dateFormat()), QTime(0, 0), QTimeZone::utc());
    FrUtils::fixDateTime(expiration);
    return expiration.date();
}

quint32 Command::getAvailableRegistrationsCount() const
{
    logger->debug(QStringLiteral("Получение количества доступных регистраций"));
    return askFn(protocol::AvailableRegistrationsQuery).toUInt();
}

quint32 Command::getRegistrationsCount() const
{
    logger->debug(QStringLiteral("Получение количества проведённых регистраций"));
    return askFn(protocol::RegistrationsQuery).toUInt();
}

bool Command::getOfdConnectionStatus() const
{
    logger->debug(QStringLiteral("Получение статуса соединения с ОФД"));
    return (askFn(protocol::OfdConnectionQuery).toUInt() & 1U) != 0;
}

quint32 Command::getFirstUnsendFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера первого непереданного документа"));
    return askFn(protocol::FirstUnsentFdNumberQuery).toUInt();
}

QDateTime Command::getFirstUnsendFdDateTime() const
{
    logger->debug(QStringLiteral("Получение даты/времени первого непереданного документа"));
    return createDateTime(frame::fields(askFn(protocol::FirstUnsentFdDateTimeQuery)));
}

QString Command::getFfdVersion() const
{
    logger->debug(QStringLiteral("Получение версии ФФД"));
    return QString::fromUtf8(askFn(protocol::FfdVersionQuery));
}

quint32 Command::getIsmNotSentCount() const
{
    logger->debug(QStringLiteral(
        "Получение количества неподтверждённых или невыгруженных уведомлений реализации маркированного товара"));
    const QList<QByteArray> fields
        = answer::atLeast(answer::NotificationCount, frame::fields(askFn(protocol::IsmNotSentQuery)));
    return fields.at(answer::NotSent).toUInt();
}

QString Command::getFnVersion() const
{
    logger->debug(QStringLiteral("Получение версии ФН"));
    const QList<QByteArray> fields
        = answer::atLeast(answer::FnVersionCount, frame::fields(askFn(protocol::FnVersionQuery)));
    const bool isSerial = fields.at(answer::IsSerial).toUInt() != 0;
    return QString::fromUtf8(fields.at(answer::FnVersion).simplified())
        + (isSerial ? QStringLiteral("(серийный)") : QStringLiteral("(опытный)"));
}

QList<hw::fr::common::TaxSystemType> Command::getTaxSystems() const
{
    logger->debug(QStringLiteral("Получение схемы налогооблажения"));
    return FrUtils::snoList(
        sendCommand(GetRegistrationData, request::GetRegistrationData{.query = protocol::TaxSystemsQuery})
            .toInt());
}

QList<QByteArray> Command::getRegistrationData() const
{
    logger->debug(QStringLiteral("Получение всех данных регистрации/перерегистрации"));
    return queryFields(GetRegistrationData, {});
}

void Command::registration(
    const QString& cashierName, const QList<hw::fr::common::TaxSystemType>& taxSystems) const
{
    logger->debug(QStringLiteral("Регистрация/перерегистрация ККТ"));
    sendCommand(Registration,
        request::Registration{
            .present = answer::atLeast(answer::RegistrationCount, getRegistrationData()),
            .cashierName = cashierName,
            .taxSystems = FrUtils::snoMask(taxSystems),
        });
}

void Command::printFnDocument(long number) const
{
    logger->debug(QStringLiteral("Печать документа из ФН"));
    sendCommand(PrintFnDocument, request::PrintFnDocument{.number = number});
}

} // namespace spfhex
