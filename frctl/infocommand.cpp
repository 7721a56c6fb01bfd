#include "infocommand.h"

#include "driverplugin.h"
#include "frctltr.h"

#include <QJsonArray>
#include <QMetaClassInfo>
#include <QMetaProperty>

namespace frctl {

namespace {

QJsonArray properties(const QObject& object)
{
    const QMetaObject& meta = *object.metaObject();
    QJsonArray result;
    for (int index = QObject::staticMetaObject.propertyCount(); index < meta.propertyCount(); ++index) {
        const QMetaProperty property = meta.property(index);
        QJsonObject entry{
            {QStringLiteral("name"), QString::fromLatin1(property.name())},
            {QStringLiteral("type"), QString::fromLatin1(property.typeName())},
            {QStringLiteral("writable"), property.isWritable()},
        };
        if (property.isReadable())
            entry.insert(QStringLiteral("value"), QJsonValue::fromVariant(property.read(&object)));
        result.append(entry);
    }
    return result;
}

QJsonArray classInfo(const QObject& object)
{
    const QMetaObject& meta = *object.metaObject();
    QJsonArray result;
    for (int index = 0; index < meta.classInfoCount(); ++index) {
        const QMetaClassInfo info = meta.classInfo(index);
        result.append(QJsonObject{{QStringLiteral("name"), QString::fromUtf8(info.name())},
            {QStringLiteral("value"), QString::fromUtf8(info.value())}});
    }
    return result;
}

QString propertyLine(const QJsonObject& entry)
{
    const QJsonValue value = entry.value(QStringLiteral("value"));
    const QString shown = value.isUndefined() ? tr("(write only)") : value.toVariant().toString();
    return QStringLiteral("  %1 : %2 = %3")
        .arg(entry.value(QStringLiteral("name")).toString(), entry.value(QStringLiteral("type")).toString(),
            shown);
}

Output describe(const Options& options)
{
    const devices::DriverPlugin plugin = devices::findDriverPlugin(options.plugins);
    const std::unique_ptr<QObject> device = devices::createDeviceObject(plugin);
    const QJsonArray deviceProperties = properties(*device);
    const QJsonArray deviceInfo = classInfo(*device);
    Output output;
    output.json = {{QStringLiteral("plugin"), plugin.fileName}, {QStringLiteral("metaData"), plugin.metaData},
        {QStringLiteral("class"), QString::fromLatin1(device->metaObject()->className())},
        {QStringLiteral("properties"), deviceProperties}, {QStringLiteral("classInfo"), deviceInfo}};
    const QJsonObject own = plugin.metaData.value(QStringLiteral("MetaData")).toObject();
    output.lines = {tr("plugin: %1").arg(plugin.fileName),
        tr("interface: %1").arg(plugin.metaData.value(QStringLiteral("IID")).toString()),
        tr("name: %1, type: %2")
            .arg(own.value(QStringLiteral("name")).toString(), own.value(QStringLiteral("type")).toString()),
        tr("properties of %1:").arg(QLatin1String(device->metaObject()->className()))};
    for (const QJsonValue entry : deviceProperties)
        output.lines.append(propertyLine(entry.toObject()));
    output.lines.append(tr("class info:"));
    for (const QJsonValue entry : deviceInfo)
        output.lines.append(QStringLiteral("  %1 = %2")
                                .arg(entry.toObject().value(QStringLiteral("name")).toString(),
                                    entry.toObject().value(QStringLiteral("value")).toString()));
    return output;
}

} // namespace

Task prepareInfo(const Options& options)
{
    return alone([options] { return describe(options); });
}

} // namespace frctl
