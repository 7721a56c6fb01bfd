#include "fnstatus.h"

#include "names.h"

namespace spfxml {

FnStatus::FnStatus(const QDomDocument& state)
    : FnStatus(StatusTexts(state))
{
}

FnStatus::FnStatus(const StatusTexts& state)
    : lifePhase(state.number(names::fn::lifePhase))
    , currentDocType(state.number(names::fn::currentDocumentType))
    , currentDocData(state.number(names::fn::currentDocumentData))
    , needChange(state.number(names::fn::needChange))
    , endingResource(state.number(names::fn::endingResource))
    , overflow(state.number(names::fn::overflow))
    , ofdWaitExceeded(state.number(names::fn::ofdWaitExceeded))
    , lastDocDateTime(state.text(names::fn::lastDocumentTime))
    , lastDocNumber(state.number(names::fn::lastDocumentNumber))
    , fnNumber(state.text(names::fn::number))
    , expirationDate(state.text(names::fn::expirationDate))
    , fwVersion(state.text(names::fn::firmwareVersion))
    // A number on purpose, unlike the same flag of the shift status, which is compared as a text.
    , isShiftOpen(state.number(names::shift::state) == 1)
{
}

QString FnStatus::toString() const
{
    const QString shiftState = isShiftOpen ? QStringLiteral("открыта") : QStringLiteral("закрыта");
    return indentedBlock({
        QStringLiteral("Состояние фазы жизни: %1 (%2)").arg(lifePhase).arg(getLifePhaseDescription()),
        QStringLiteral("Тип текущего документа: %1").arg(currentDocType),
        QStringLiteral("Наличие данных текущего документа: %1").arg(currentDocData),
        QStringLiteral("Состояние смены: %1").arg(shiftState),
        QStringLiteral("Требуется замена ФН: %1").arg(needChange),
        QStringLiteral("Заканчивается ресурс ФН: %1").arg(endingResource),
        QStringLiteral("ФН переполнен: %1").arg(overflow),
        QStringLiteral("Долгое ожидание ОФД: %1").arg(ofdWaitExceeded),
        QStringLiteral("Дата и время текущего документа: %1").arg(lastDocDateTime),
        QStringLiteral("Номер последнего ФД: %1").arg(lastDocNumber),
        QStringLiteral("Номер ФН: %1").arg(fnNumber),
        QStringLiteral("Срок действия ФН: %1").arg(expirationDate),
        QStringLiteral("Версия ФН: %1").arg(fwVersion),
    });
}

QString FnStatus::getLifePhaseDescription() const
{
    switch (lifePhase) {
    case 1:
        return QStringLiteral("готовность к регистрации");
    case 3:
        return QStringLiteral("фискальный режим");
    case 7:
    case 15:
        return QStringLiteral("постфискальный режим");
    default:
        return QStringLiteral("неизвестный режим");
    }
}

} // namespace spfxml
