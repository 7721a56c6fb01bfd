// Queries of the device: identity, shift, counters.

#include "command.h"

#include "frame.h"
#include "requests.h"

#include <log4qt/logger.h>

namespace spfhex {

namespace {

QList<double> toSums(const QList<QByteArray>& fields)
{
    QList<double> sums;
    for (const QByteArray& field : fields)
        sums.append(field.toDouble());
    return sums;
}

} // namespace

QByteArray Command::askKkt(protocol::KktQuery query) const
{
    return sendCommand(GetKktData, request::GetKktData{.query = query});
}

QString Command::getSerialNumber() const
{
    logger->debug(QStringLiteral("Получение заводского номера ККТ"));
    return QString::fromUtf8(sendCommand(GetSerialNumber, {})).trimmed();
}

int Command::getModelVersionNumber() const
{
    logger->debug(QStringLiteral("Получение номера версии модели ККТ"));
    return askKkt(protocol::ModelVersionQuery).toInt();
}

int Command::getReleaseVersionNumber() const
{
    logger->debug(QStringLiteral("Получение номера релиза"));
    return sendCommand(GetKktData, request::GetKktRelease{}).toInt();
}

int Command::getCurrentShiftNumber() const
{
    logger->debug(QStringLiteral("Получение номера текущей смены"));
    return askKkt(protocol::ShiftNumberQuery).toInt();
}

QList<double> Command::getSaleCounters() const
{
    logger->debug(QStringLiteral("Получение сумм прихода по типам платежа"));
    return toSums(frame::fields(askKkt(protocol::SaleCountersQuery)));
}

QList<double> Command::getBackCounters() const
{
    logger->debug(QStringLiteral("Получение сумм возврата прихода по типам платежа"));
    return toSums(frame::fields(askKkt(protocol::BackCountersQuery)));
}

double Command::getDrawerSum() const
{
    logger->debug(QStringLiteral("Получение суммы наличных в денежном ящике"));
    return askKkt(protocol::DrawerSumQuery).toDouble();
}

QString Command::getNextFdNumber() const
{
    logger->debug(QStringLiteral("Получение номера следующего фискального чека в пределах открытой смены"));
    return QString::fromUtf8(askKkt(protocol::NextFdNumberQuery));
}

QString Command::getInn() const
{
    logger->debug(QStringLiteral("Получение ИНН пользователя ККТ"));
    return QString::fromUtf8(askKkt(protocol::InnQuery));
}

QString Command::getRegistrationNumber() const
{
    logger->debug(QStringLiteral("Получение регистрационного номера ККТ"));
    return QString::fromUtf8(askKkt(protocol::RegistrationNumberQuery));
}

QList<int> Command::getDocumentCounters() const
{
    logger->debug(QStringLiteral("Получение количества оформленных за смену документов"));
    QList<int> counts;
    for (const QByteArray& field : frame::fields(askKkt(protocol::DocumentCountersQuery)))
        counts.append(field.toInt());
    return counts;
}

QList<double> Command::getDocumentSums() const
{
    logger->debug(QStringLiteral("Получение сумм по оформленным за смену документам"));
    return toSums(frame::fields(askKkt(protocol::DocumentSumsQuery)));
}

} // namespace spfhex
