#include "configuration/registersettings.h"

#include <QJsonArray>

namespace frserver {

QJsonObject RegisterSettings::toJson() const
{
    return {{QStringLiteral("name"), name}, {QStringLiteral("port"), port},
        {QStringLiteral("protocol"), receipt::protocolName(protocol)},
        {QStringLiteral("serial"), expected.serial}, {QStringLiteral("inn"), expected.inn},
        {QStringLiteral("cashier"), cashier}, {QStringLiteral("cashierInn"), cashierInn},
        {QStringLiteral("timeZone"), QString::fromLatin1(timeZone.id())},
        {QStringLiteral("shift"), static_cast<int>(shift)}, {QStringLiteral("exclusive"), isExclusive},
        {QStringLiteral("allowTestDrive"), allowsTestDrive},
        {QStringLiteral("setsClock"), clock == ClockRule::Set},
        {QStringLiteral("marks"), static_cast<int>(marks)},
        {QStringLiteral("plugins"), QJsonArray::fromStringList(plugins)}};
}

RegisterSettings RegisterSettings::fromJson(const QJsonObject& json)
{
    const auto text = [&json](const char* key) { return json.value(QLatin1String(key)).toString(); };
    RegisterSettings settings;
    settings.name = text("name");
    settings.port = text("port");
    settings.protocol = receipt::protocolNamed(text("protocol")).value_or(receipt::Protocol::Xml);
    settings.expected = {text("serial"), text("inn")};
    settings.cashier = text("cashier");
    settings.cashierInn = text("cashierInn");
    settings.timeZone = QTimeZone(text("timeZone").toLatin1());
    settings.shift = static_cast<ShiftRule>(json.value(QStringLiteral("shift")).toInt());
    settings.isExclusive = json.value(QStringLiteral("exclusive")).toBool();
    settings.allowsTestDrive = json.value(QStringLiteral("allowTestDrive")).toBool();
    settings.clock = json.value(QStringLiteral("setsClock")).toBool() ? ClockRule::Set : ClockRule::Warn;
    settings.marks = static_cast<sale::MarkPolicy>(json.value(QStringLiteral("marks")).toInt());
    for (const QJsonValue plugin : json.value(QStringLiteral("plugins")).toArray())
        settings.plugins.append(plugin.toString());
    return settings;
}

} // namespace frserver
