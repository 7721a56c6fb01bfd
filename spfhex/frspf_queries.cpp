// Fiscal drive, OFD, registration, descriptions.

#include "frspf.h"

#include "centredline.h"
#include "command.h"
#include "driverlogger.h"
#include "drivertexts.h"
#include "exceptions.h"

namespace spfhex {

QList<hw::fr::common::TaxSystemType> FrSpf::getAllTaxSystems() const
{
    logger->info(QStringLiteral("Получение списка систем налогообложения"));
    isPortReady();
    return command->getTaxSystems();
}

hw::fr::common::TaxSystemType FrSpf::getDefaultTaxSystem() const
{
    const QList<hw::fr::common::TaxSystemType> registered = getAllTaxSystems();
    if (registered.isEmpty())
        throw FrCommandException(drivertexts::badAnswer());
    return registered.constFirst();
}

void FrSpf::registration(const QList<hw::fr::common::TaxSystemType>& taxSystems,
    hw::fr::common::TaxSystemType, const QString&, const QList<RegistrationReason>&,
    const QMap<QString, QVariant>&)
{
    logger->info(QStringLiteral("Регистрация/перерегистрация"));
    command->registration(cashierName, taxSystems);
    logDone();
}

QString FrSpf::getInn()
{
    logger->info(QStringLiteral("Получение ИНН"));
    isPortReady();
    return command->getInn();
}

QString FrSpf::getFfdVersion()
{
    logger->info(QStringLiteral("Получение версии ФФД"));
    isPortReady();
    return command->getFfdVersion();
}

void FrSpf::printFnDocument(long documentNumber)
{
    logger->info(QStringLiteral("Печать копии фискального документа по номеру"));
    isPortReady();
    command->printFnDocument(documentNumber);
}

OfdStatusInfo FrSpf::getOfdStatusInfo()
{
    logger->info(QStringLiteral("Получение статуса информационного обмена"));
    isPortReady();
    OfdStatusInfo status;
    status.isConnected = command->getOfdConnectionStatus() ? 1 : 0;
    status.firstUnsentDateTime = command->getFirstUnsendFdDateTime();
    status.firstUnsentNumber = static_cast<int>(command->getFirstUnsendFdNumber());
    logger->info(status.toString());
    return status;
}

FnInfo FrSpf::getFnInfo()
{
    logger->info(QStringLiteral("Получение данных о состоянии фискального накопителя"));
    isPortReady();
    FnInfo info;
    info.validityDate.date = command->getFnExpirationDate();
    info.validityDate.availableRegistrations = static_cast<quint8>(command->getAvailableRegistrationsCount());
    info.validityDate.registrationsMade = static_cast<quint8>(command->getRegistrationsCount());
    info.fnStatus = command->getFnState();
    info.fnStatus.lastFdNumber = command->getLastFdNumber();
    info.fnStatus.lastFdDateTime = command->getLastFdDateTime();
    info.fnStatus.fnNumber = command->getFnNumber();
    info.ofdStatus = getOfdStatusInfo();
    info.fnVersion = command->getFnVersion();
    info.ffdVersion = command->getFfdVersion();
    info.unsentNotifications = static_cast<qint32>(command->getIsmNotSentCount());
    logDone();
    return info;
}

QStringList FrSpf::getFnStateDescription()
{
    logger->info(QStringLiteral("Получение описания состояния ФН устройства"));
    isPortReady();
    FnStatusInfo status = command->getFnState();
    status.lastFdNumber = command->getLastFdNumber();
    status.lastFdDateTime = command->getLastFdDateTime();
    status.fnNumber = command->getFnNumber();
    FnUtils::ValidityDate validity;
    validity.date = command->getFnExpirationDate();
    validity.availableRegistrations = static_cast<quint8>(command->getAvailableRegistrationsCount());
    validity.registrationsMade = static_cast<quint8>(command->getRegistrationsCount());

    QStringList lines = status.getStrInfo();
    lines.append(validity.getStrInfo());
    lines.append(QStringLiteral("Версия: %1").arg(command->getFnVersion()));
    lines.append(QString());
    logger->debug(QStringLiteral("Описание состояния ФН получено"));
    return lines;
}

QStringList FrSpf::getDeviceStateDescription()
{
    logger->info(QStringLiteral("Получение описания состояния устройства"));
    isPortReady();
    QStringList lines{
        QStringLiteral("Производитель: %1 %2")
            .arg(deviceInfo.getProducerCode(), deviceInfo.getProducerName(false)),
        QStringLiteral("Модель: %1 %2").arg(deviceInfo.getModelCode(), deviceInfo.getModelName()),
        QStringLiteral("Номер: %1").arg(deviceInfo.getNumber()),
        QStringLiteral("Скорость подключения: %1").arg(currentSpeed),
    };
    const QString registrationNumber = command->getRegistrationNumber();
    const QString inn = command->getInn();
    lines.append(QStringLiteral("Рег. номер: %1 ИНН: %2").arg(registrationNumber, inn));
    lines.append(getDateTime().toString(QStringLiteral("Дата: dd.MM.yyyy Время: hh:mm:ss")));

    const StateStatus status = command->requestStateStatus();
    lines.append(status.getFatalStateStatus());
    lines.append(status.getCurrentFlagsStatus());
    lines.append(status.getDocumentStatus());

    const auto width = static_cast<int>(deviceInfo.getBandWidth());
    lines.append(centredLine(QStringLiteral("ФН"), QLatin1Char('-'), width));
    lines.append(getFnStateDescription());
    lines.append(QStringLiteral("Версия ФФД: ") + getFfdVersion());
    logger->info(QStringLiteral("Описание состояния получено"));
    return lines;
}

} // namespace spfhex
