// Queries of the fiscal drive, registration.

#include "command.h"

#include "cp866.h"
#include "datetimefields.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "frame.h"
#include "frutils.h"

#include <logger.h>

namespace spfhex {

namespace {

// Numbers of the GetFnData queries.
enum FnQuery {
    LastFdNumberQuery = 1,
    LastFdDateTimeQuery = 2,
    FnNumberQuery = 3,
    FnExpirationDateQuery = 5,
    AvailableRegistrationsQuery = 6,
    RegistrationsQuery = 7,
    OfdConnectionQuery = 8,
    FirstUnsentFdNumberQuery = 10,
    FirstUnsentFdDateTimeQuery = 11,
    FfdVersionQuery = 12,
    IsmNotSentQuery = 14,
    FnVersionQuery = 15
};

// The tax systems among the registration data.
constexpr int taxSystemsField = 10;
constexpr int registrationFieldCount = 13;
// The device's own constant of a re-registration.
constexpr int registrationConstant = 128;

void checkFieldCount(const QList<QByteArray>& fields, qsizetype count)
{
    if (fields.size() < count)
        throw FrCommandException(drivertexts::badAnswer());
}

} // namespace

FnStatusInfo Command::getFnState() const
{
    logger->debug(QStringLiteral("Получение статуса ФН"));
    const QList<QByteArray> fields = queryFields(GetFnData, {});
    checkFieldCount(fields, 5);
    FnStatusInfo state;
    state.lifePhase = static_cast<quint8>(fields.at(0).toUInt());
    state.currentDocType = static_cast<quint8>(fields.at(1).toUInt());
    state.hasDocData = fields.at(2).toUInt() != 0;
    state.isShiftOpen = fields.at(3).toUInt() != 0;
    state.warningFlags = static_cast<quint8>(fields.at(4).toUInt());
    return state;
}

quint32 Command::getLastFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера последнего ФД"));
    return sendCommand(GetFnData, {LastFdNumberQuery}).toUInt();
}

QDateTime Command::getLastFdDateTime() const
{
    logger->debug(QStringLiteral("Получение даты/времени последнего ФД"));
    return createDateTime(queryFields(GetFnData, {LastFdDateTimeQuery}));
}

QString Command::getFnNumber() const
{
    logger->debug(QStringLiteral("Получение заводского номера ФН"));
    return QString::fromUtf8(sendCommand(GetFnData, {FnNumberQuery}));
}

QDate Command::getFnExpirationDate() const
{
    logger->debug(QStringLiteral("Получение даты срока действия ФН"));
    const QByteArray field = queryFields(GetFnData, {FnExpirationDateQuery}).constFirst();
    // In UTC: a midnight of the local zone need not exist on that day of the past century.
    QDateTime expiration(QDate::fromString(QString::fromLatin1(field), dateFormat()), QTime(0, 0), Qt::UTC);
    FrUtils::fixDateTime(expiration);
    return expiration.date();
}

quint32 Command::getAvailableRegistrationsCount() const
{
    logger->debug(QStringLiteral("Получение количества доступных регистраций"));
    return sendCommand(GetFnData, {AvailableRegistrationsQuery}).toUInt();
}

quint32 Command::getRegistrationsCount() const
{
    logger->debug(QStringLiteral("Получение количества проведённых регистраций"));
    return sendCommand(GetFnData, {RegistrationsQuery}).toUInt();
}

bool Command::getOfdConnectionStatus() const
{
    logger->debug(QStringLiteral("Получение статуса соединения с ОФД"));
    return (sendCommand(GetFnData, {OfdConnectionQuery}).toUInt() & 1U) != 0;
}

quint32 Command::getFirstUnsendFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера первого непереданного документа"));
    return sendCommand(GetFnData, {FirstUnsentFdNumberQuery}).toUInt();
}

QDateTime Command::getFirstUnsendFdDateTime() const
{
    logger->debug(QStringLiteral("Получение даты/времени первого непереданного документа"));
    return createDateTime(queryFields(GetFnData, {FirstUnsentFdDateTimeQuery}));
}

QString Command::getFfdVersion() const
{
    logger->debug(QStringLiteral("Получение версии ФФД"));
    return QString::fromUtf8(sendCommand(GetFnData, {FfdVersionQuery}));
}

quint32 Command::getIsmNotSentCount() const
{
    logger->debug(QStringLiteral(
        "Получение количества неподтверждённых или невыгруженных уведомлений реализации маркированного товара"));
    const QList<QByteArray> fields = queryFields(GetFnData, {IsmNotSentQuery});
    checkFieldCount(fields, 7);
    return fields.at(6).toUInt();
}

QString Command::getFnVersion() const
{
    logger->debug(QStringLiteral("Получение версии ФН"));
    const QList<QByteArray> fields = queryFields(GetFnData, {FnVersionQuery});
    checkFieldCount(fields, 2);
    const bool isSerial = fields.at(1).toUInt() != 0;
    return QString::fromUtf8(fields.at(0).simplified())
        + (isSerial ? QStringLiteral("(серийный)") : QStringLiteral("(опытный)"));
}

QList<hw::fr::common::TaxSystemType> Command::getTaxSystems() const
{
    logger->debug(QStringLiteral("Получение схемы налогооблажения"));
    return FrUtils::snoList(sendCommand(GetRegistrationData, {taxSystemsField}).toInt());
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
    const QList<QByteArray> data = getRegistrationData();
    checkFieldCount(data, registrationFieldCount);
    // The device wants its own data back in this order of its own.
    sendCommand(Registration,
        {QVariant(), data.at(4), data.at(3), data.at(0), toCp866(cashierName), QVariant(), data.at(5),
            data.at(6), FrUtils::snoMask(taxSystems), data.at(11), data.at(10), data.at(7), data.at(8),
            data.at(1), data.at(12), QString::number(registrationConstant), QVariant(), QVariant()});
}

void Command::printFnDocument(long number) const
{
    logger->debug(QStringLiteral("Печать документа из ФН"));
    sendCommand(PrintFnDocument, {QVariant::fromValue(number)});
}

} // namespace spfhex
