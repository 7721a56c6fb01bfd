#include "fnstatusinfo.h"

#include "servicetexts.h"

namespace {

// The bits fill up from the right over the drive's life and are never taken back.
QString lifePhaseText(quint8 phase)
{
    switch (phase) {
    case 0:
        return QStringLiteral("настройка");
    case 1:
        return QStringLiteral("готовность к регистрации");
    case 3:
        return QStringLiteral("фискальный режим");
    case 7:
        return QStringLiteral("постфискальный режим, передача данных в ОФД");
    case 15:
        return QStringLiteral("чтение данных из архива");
    default:
        return QStringLiteral("неизвестная фаза");
    }
}

QString flagText(quint8 flags, int bit)
{
    return servicetexts::yesNo((flags >> bit & 1) != 0);
}

} // namespace

QStringList FnStatusInfo::getStrInfo() const
{
    using servicetexts::yesNo;
    return {
        QStringLiteral("Номер ФН: %1").arg(fnNumber),
        QStringLiteral("Фаза жизни ФН: %1 (%2)").arg(lifePhase).arg(lifePhaseText(lifePhase)),
        QStringLiteral("Смена открыта: %1").arg(yesNo(isShiftOpen)),
        QStringLiteral("Тип текущего документа: %1").arg(currentDocType),
        QStringLiteral("Данные текущего документа получены: %1").arg(yesNo(hasDocData)),
        QStringLiteral("Номер последнего ФД: %1").arg(lastFdNumber),
        QStringLiteral("Дата и время последнего ФД: %1").arg(servicetexts::dateTime(lastFdDateTime)),
        QStringLiteral("Требуется срочная замена ФН: %1").arg(flagText(warningFlags, 0)),
        QStringLiteral("Ресурс ФН исчерпывается: %1").arg(flagText(warningFlags, 1)),
        QStringLiteral("Память ФН переполнена: %1").arg(flagText(warningFlags, 2)),
        QStringLiteral("Превышено время ожидания ответа ОФД: %1").arg(flagText(warningFlags, 3)),
    };
}
