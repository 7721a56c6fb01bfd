#include "frspf.h"

namespace spfxml {

QStringList FrSpf::getDeviceStateDescription()
{
    logger->info(QStringLiteral("Получение описания состояния устройства"));
    const QStringList lines{
        QStringLiteral("Производитель: %1 %2")
            .arg(deviceInfo.getProducerCode(), deviceInfo.getProducerName(false)),
        QStringLiteral("Модель: %1 %2").arg(deviceInfo.getModelCode(), deviceInfo.getModelName()),
        QStringLiteral("Номер: %1").arg(deviceInfo.getNumber()),
        QStringLiteral("Скорость подключения: %1").arg(currentSpeed),
        getDateTime().toString(QStringLiteral("Дата: dd.MM.yyyy Время: hh:mm:ss")),
        QString(),
        command->getStatus().toString(),
    };
    logger->info(QStringLiteral("Описание состояния получено"));
    return lines;
}

QStringList FrSpf::getFnStateDescription()
{
    logger->info(QStringLiteral("Получение описания состояния ФН устройства"));
    const FnInfo info = getFnInfo();
    QStringList lines = info.fnStatus.getStrInfo();
    lines.append(info.validityDate.getStrInfo());
    lines.append(QStringLiteral("Версия: %1").arg(info.fnVersion));
    lines.append(QString());
    logger->debug(QStringLiteral("Описание состояния ФН получено"));
    return lines;
}

} // namespace spfxml
