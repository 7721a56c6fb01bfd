#include "configuration.h"

#include "configurationfile.h"
#include "errors.h"
#include "frctltr.h"
#include "options.h"
#include "optiontable.h"
#include "suggestion.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>

namespace frctl {

namespace {

QStringList defaultFiles()
{
    const QString name = QStringLiteral("/frspf/frctl.ini");
    return {QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + name,
        QStringLiteral("/etc") + name};
}

QStringList keys()
{
    QStringList names;
    for (const OptionRow& row : optionRows()) {
        if (row.key != nullptr)
            names.append(QLatin1String(row.key));
    }
    return names;
}

Setting settingOf(const devices::IniEntry& entry, const QString& origin)
{
    const OptionRow* const row = findKey(entry.key);
    if (row == nullptr)
        throw UsageError(tr("%1: no such key%2; there are %3")
                             .arg(origin, suggestion(entry.key, keys()), keys().join(QStringLiteral(", "))));
    return {row, entry.value, origin};
}

/// It only keeps a later file from switching it on.
bool isSwitchedOff(const Setting& setting)
{
    if (!setting.option->isSwitch() || setting.value == QStringLiteral("yes"))
        return false;
    if (setting.value != QStringLiteral("no"))
        throw UsageError(tr("%1: \"%2\" is neither yes nor no").arg(setting.origin, setting.value));
    return true;
}

bool hasOption(const Settings& settings, const OptionRow* option)
{
    return std::any_of(settings.cbegin(), settings.cend(),
        [option](const Setting& setting) { return setting.option == option; });
}

} // namespace

Configuration::Configuration(const QString& fileName)
    : Configuration(fileName.isEmpty() ? defaultFiles() : QStringList{fileName})
{
    // One that is named must be there; reading it tells why it is not.
    if (!fileName.isEmpty() && !QFile::exists(fileName))
        read(fileName);
}

Configuration::Configuration(const QStringList& files)
    : m_files(files)
{
    for (const QString& file : m_files) {
        if (QFile::exists(file))
            read(file);
    }
    for (ConfiguredRegister& entry : m_registers)
        entry.settings.removeIf(isSwitchedOff);
}

void Configuration::read(const QString& fileName)
{
    Options judged;
    for (const devices::IniSection& section : readConfigurationFile(fileName)) {
        Settings& settings = registerOf(section.name).settings;
        Settings added;
        for (const devices::IniEntry& entry : section.entries) {
            const Setting setting
                = settingOf(entry, QStringLiteral("%1: [%2] %3").arg(fileName, section.name, entry.key));
            if (!isSwitchedOff(setting))
                applySetting(setting, judged);
            if (!hasOption(settings, setting.option))
                added.append(setting);
        }
        settings += added;
    }
}

ConfiguredRegister& Configuration::registerOf(const QString& name)
{
    const auto found = std::find_if(m_registers.begin(), m_registers.end(),
        [&name](const ConfiguredRegister& entry) { return entry.name == name; });
    if (found != m_registers.end())
        return *found;
    m_registers.append({name, {}});
    return m_registers.last();
}

const ConfiguredRegister& Configuration::require(const QString& name) const
{
    QStringList names;
    for (const ConfiguredRegister& entry : m_registers) {
        if (entry.name == name)
            return entry;
        names.append(entry.name);
    }
    throw UsageError(tr("--register: there is no [%1] in %2%3; %4")
                         .arg(name, m_files.join(tr(" or ")), suggestion(name, names),
                             names.isEmpty() ? tr("no register is configured")
                                             : tr("there are ") + names.join(QStringLiteral(", "))));
}

} // namespace frctl
