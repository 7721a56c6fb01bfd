// Queries of the device: identity, shift, counters.

#include "command.h"

#include "frame.h"

#include <logger.h>

namespace spfhex {

namespace {

// Numbers of the GetKktData queries.
enum KktQuery {
    ModelVersionQuery = 0,
    ShiftNumberQuery = 1,
    SaleCountersQuery = 3,
    BackCountersQuery = 4,
    DrawerSumQuery = 5,
    NextFdNumberQuery = 7,
    InnQuery = 9,
    RegistrationNumberQuery = 10,
    DocumentCountersQuery = 13,
    DocumentSumsQuery = 14
};

QList<double> toSums(const QList<QByteArray>& fields)
{
    QList<double> sums;
    for (const QByteArray& field : fields)
        sums.append(field.toDouble());
    return sums;
}

} // namespace

QString Command::getSerialNumber() const
{
    logger->debug(QStringLiteral("Получение заводского номера ККТ"));
    return QString::fromUtf8(sendCommand(GetSerialNumber, {})).trimmed();
}

int Command::getModelVersionNumber() const
{
    logger->debug(QStringLiteral("Получение номера версии модели ККТ"));
    return sendCommand(GetKktData, {ModelVersionQuery}).toInt();
}

int Command::getReleaseVersionNumber() const
{
    logger->debug(QStringLiteral("Получение номера релиза"));
    return sendCommand(GetKktData, {ModelVersionQuery, 1}).toInt();
}

int Command::getCurrentShiftNumber() const
{
    logger->debug(QStringLiteral("Получение номера текущей смены"));
    return sendCommand(GetKktData, {ShiftNumberQuery}).toInt();
}

QList<double> Command::getSaleCounters() const
{
    logger->debug(QStringLiteral("Получение сумм прихода по типам платежа"));
    return toSums(queryFields(GetKktData, {SaleCountersQuery}));
}

QList<double> Command::getBackCounters() const
{
    logger->debug(QStringLiteral("Получение сумм возврата прихода по типам платежа"));
    return toSums(queryFields(GetKktData, {BackCountersQuery}));
}

double Command::getDrawerSum() const
{
    logger->debug(QStringLiteral("Получение суммы наличных в денежном ящике"));
    return sendCommand(GetKktData, {DrawerSumQuery}).toDouble();
}

QString Command::getNextFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера следующего фискального чека в пределах открытой смены"));
    return QString::fromUtf8(sendCommand(GetKktData, {NextFdNumberQuery}));
}

QString Command::getInn() const
{
    logger->debug(QStringLiteral("Получение ИНН пользователя ККТ"));
    return QString::fromUtf8(sendCommand(GetKktData, {InnQuery}));
}

QString Command::getRegistrationNumber() const
{
    logger->debug(QStringLiteral("Получение регистрационного номера ККТ"));
    return QString::fromUtf8(sendCommand(GetKktData, {RegistrationNumberQuery}));
}

QList<int> Command::getDocumentCounters() const
{
    logger->debug(QStringLiteral("Получение количества оформленных за смену документов"));
    QList<int> counts;
    for (const QByteArray& field : queryFields(GetKktData, {DocumentCountersQuery}))
        counts.append(field.toInt());
    return counts;
}

QList<double> Command::getDocumentSums() const
{
    logger->debug(QStringLiteral("Получение сумм по оформленным за смену документам"));
    return toSums(queryFields(GetKktData, {DocumentSumsQuery}));
}

} // namespace spfhex
