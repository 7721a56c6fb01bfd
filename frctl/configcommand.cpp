#include "configcommand.h"

#include "configuration.h"
#include "errors.h"
#include "frctltr.h"
#include "messages.h"
#include "optiontable.h"

#include <QFile>
#include <QJsonArray>

namespace frctl {

namespace {

QString keyOf(const Setting& setting)
{
    return QLatin1String(setting.option->key);
}

QString valueOf(const Setting& setting)
{
    return setting.option->isSwitch() ? QStringLiteral("yes") : setting.value;
}

QString originOf(const Setting& setting)
{
    return setting.origin.isEmpty() ? tr("command line") : setting.origin;
}

QJsonObject registerJson(const ConfiguredRegister& entry)
{
    QJsonArray settings;
    for (const Setting& setting : entry.settings)
        settings.append(QJsonObject{{QStringLiteral("key"), keyOf(setting)},
            {QStringLiteral("value"), valueOf(setting)}, {QStringLiteral("origin"), originOf(setting)}});
    return {{QStringLiteral("name"), entry.name}, {QStringLiteral("settings"), settings}};
}

/// As a file may have them.
QStringList shownLines(const QList<ConfiguredRegister>& registers)
{
    QStringList lines;
    for (const ConfiguredRegister& entry : registers) {
        lines.append(QStringLiteral("[%1]").arg(entry.name));
        for (const Setting& setting : entry.settings)
            lines += {QStringLiteral("# ") + originOf(setting),
                QStringLiteral("%1 = %2").arg(keyOf(setting), valueOf(setting))};
    }
    return lines;
}

QStringList fileLines(const Configuration& configuration)
{
    QStringList lines;
    for (const QString& file : configuration.files())
        lines.append(QFile::exists(file) ? file : file + tr(" (not there)"));
    return lines;
}

QStringList nameLines(const QList<ConfiguredRegister>& registers)
{
    QStringList lines;
    for (const ConfiguredRegister& entry : registers)
        lines.append(entry.name);
    return lines;
}

QJsonArray filesJson(const Configuration& configuration)
{
    QJsonArray files;
    for (const QString& file : configuration.files())
        files.append(
            QJsonObject{{QStringLiteral("file"), file}, {QStringLiteral("exists"), QFile::exists(file)}});
    return files;
}

/// All, or the one that is named; with what the command line says of it when it is that of --register.
QList<ConfiguredRegister> registersOf(const Configuration& configuration, const Options& options)
{
    const QString name = options.arguments.value(1, options.registerSection);
    if (name.isEmpty())
        return configuration.registers();
    if (name != options.registerSection)
        return {configuration.require(name)};
    Settings settings = options.settings;
    settings.removeIf([](const Setting& setting) { return setting.option->key == nullptr; });
    return {{name, settings}};
}

Output configured(const Options& options, const QString& what)
{
    const Configuration configuration(options.configFile);
    const QList<ConfiguredRegister> registers = registersOf(configuration, options);
    QJsonArray json;
    for (const ConfiguredRegister& entry : registers)
        json.append(registerJson(entry));
    Output output;
    output.json = {{QStringLiteral("files"), filesJson(configuration)}, {QStringLiteral("registers"), json}};
    if (what == QStringLiteral("path"))
        output.lines = fileLines(configuration);
    else
        output.lines = what == QStringLiteral("list") ? nameLines(registers) : shownLines(registers);
    return output;
}

} // namespace

Task prepareConfig(const Options& options)
{
    const QString what = options.arguments.value(0, QStringLiteral("show"));
    if (!QStringList{QStringLiteral("path"), QStringLiteral("list"), QStringLiteral("show")}.contains(what)
        || (options.arguments.size() > 1 && what != QStringLiteral("show")))
        throw UsageError(tr("config takes path, list or show [NAME]"));
    const Output output = configured(options, what);
    if (what != QStringLiteral("path") && output.lines.isEmpty())
        // Shells complete with what is printed.
        complain(
            tr("no register is configured; looked for %1; frctl detect PORT prints a section to begin with")
                .arg(fileLines(Configuration(options.configFile)).join(QStringLiteral(", "))));
    return alone([output] { return output; });
}

} // namespace frctl
