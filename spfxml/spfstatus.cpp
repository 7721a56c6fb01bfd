#include "spfstatus.h"

#include "names.h"

namespace spfxml {

SpfStatus::SpfStatus(const QDomDocument& state, const QDomDocument& info)
    : SpfStatus(StatusTexts(state), StatusTexts(info))
{
}

SpfStatus::SpfStatus(const StatusTexts& state, const StatusTexts& info)
    : networkInterface(state.text(names::device::networkInterface))
    , paperWidth(state.number(names::device::paperWidth))
    , kktNumber(state.text(names::device::number))
    , registrationNumber(info.text(names::device::registrationNumber))
    , kktFwVersion(state.text(names::device::firmwareVersion))
    , swVersion(info.text(names::device::softwareVersion))
    , ffdVersion1190(info.text(names::device::ffdVersion1190))
    , ffdVersion1189(info.text(names::device::ffdVersion1189))
    , fn(state)
    , ofd(state)
{
}

QString SpfStatus::toString() const
{
    const QString device = indentedBlock({
        QStringLiteral("Сетевые интерфейсы: %1").arg(networkInterface),
        QStringLiteral("Ширина ленты (символов): %1").arg(paperWidth),
        QStringLiteral("Заводской номер ККТ: %1").arg(kktNumber),
        QStringLiteral("Версия прошивки ККТ: %1").arg(kktFwVersion),
        QStringLiteral("Версия сборки: %1").arg(swVersion),
        // 1189 behind the longer label and 1190 behind the shorter one is meant.
        QStringLiteral("Версия ФФД ККТ ФН: %1").arg(ffdVersion1189),
        QStringLiteral("Версия ФФД ККТ: %1").arg(ffdVersion1190),
        QStringLiteral("Регистрационный номер ККТ: %1").arg(registrationNumber),
    });
    const QStringList blocks{QStringLiteral("Статус ФР"), device, QStringLiteral("Статус ФН"), fn.toString(),
        QStringLiteral("Статус ОФД"), ofd.toString()};
    return blocks.join(QLatin1Char('\n'));
}

} // namespace spfxml
