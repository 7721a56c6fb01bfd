#include "register/settings.h"

#include "register/settingtable.h"

namespace emulator {

Settings::Settings(int width)
{
    for (const SettingEntry& entry : settingTable())
        m_values[entry.path] = entry.initial;
    m_values[setting::width] = QString::number(width);
}

int Settings::paperWidth() const
{
    return text(setting::width).toInt();
}

bool Settings::isTrue(const QString& text)
{
    return text == QStringLiteral("true") || text == QStringLiteral("1");
}

bool Settings::isFlag(const QString& text)
{
    return isTrue(text) || text == QStringLiteral("false") || text == QStringLiteral("0");
}

bool Settings::isWidth(const QString& text)
{
    constexpr int narrowest = 24;
    constexpr int widest = 64;
    const int width = text.toInt();
    return width >= narrowest && width <= widest;
}

} // namespace emulator
