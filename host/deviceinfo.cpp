#include "deviceinfo.h"

#include <QStringList>

namespace {

QString producerName(const QString& code)
{
    return code == QStringLiteral("2") ? QStringLiteral("Сервис Плюс") : QString();
}

QString fontWidths(const QMap<EFrDriver::FontTypes, unsigned>& widths)
{
    QStringList texts;
    for (auto width = widths.cbegin(); width != widths.cend(); ++width)
        texts.append(QStringLiteral("%1 - %2").arg(static_cast<int>(width.key())).arg(width.value()));
    return texts.isEmpty() ? QStringLiteral("нет данных") : texts.join(QStringLiteral(", "));
}

} // namespace

DeviceInfo::DeviceInfo(const QString& producerCode, const QString& modelCode)
    : m_producerCode(producerCode)
    , m_modelCode(modelCode)
{
}

QString DeviceInfo::getProducerName(bool withCode) const
{
    const QString name = producerName(m_producerCode);
    return withCode ? QStringLiteral("%1 %2").arg(m_producerCode, name).trimmed() : name;
}

void DeviceInfo::setModel(const QString& code, const QString& name)
{
    m_modelCode = code;
    m_modelName = name;
}

void DeviceInfo::setBandInfo(
    unsigned bandWidth, unsigned clicheLineCount, unsigned tailLineCount, unsigned margin)
{
    m_bandWidth = bandWidth;
    m_clicheLineCount = clicheLineCount;
    m_tailLineCount = tailLineCount;
    m_margin = margin;
}

QString DeviceInfo::toString() const
{
    const QStringList lines{
        QStringLiteral("Производитель: %1").arg(getProducerName(true)),
        QStringLiteral("Модель: %1 %2").arg(m_modelCode, m_modelName),
        QStringLiteral("Номер: %1").arg(m_number),
        QStringLiteral("Версия ПО: %1").arg(m_firmwareVersion),
        QStringLiteral("Ширина ленты: %1, отступ: %2").arg(m_bandWidth).arg(m_margin),
        QStringLiteral("Строк клише: %1, строк рекламного текста: %2")
            .arg(m_clicheLineCount)
            .arg(m_tailLineCount),
        QStringLiteral("Ширина ленты по шрифтам: %1").arg(fontWidths(m_bandWidthFonts)),
    };
    return lines.join(QLatin1Char('\n'));
}
