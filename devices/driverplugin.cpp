#include "driverplugin.h"

#include "connectionerror.h"
#include "devicestr.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QPluginLoader>
#include <QVariant>

#include <optional>

namespace devices {

namespace {

QStringList libraries(const QString& place)
{
    const QFileInfo info(place);
    if (!info.isDir())
        return {info.absoluteFilePath()};
    QStringList files;
    for (const QFileInfo& entry : QDir(place).entryInfoList(QDir::Files, QDir::Name)) {
        if (QLibrary::isLibrary(entry.fileName()))
            files.append(entry.absoluteFilePath());
    }
    return files;
}

std::optional<DriverPlugin> inspect(const QString& fileName)
{
    const QJsonObject metaData = QPluginLoader(fileName).metaData();
    const QJsonObject own = metaData.value(QStringLiteral("MetaData")).toObject();
    if (own.value(QStringLiteral("name")).toString() != QStringLiteral("spf")
        || own.value(QStringLiteral("type")).toString() != QStringLiteral("fr"))
        return std::nullopt;
    return DriverPlugin{QFileInfo(fileName).canonicalFilePath(), metaData};
}

} // namespace

QStringList usualPluginPlaces()
{
    const QString path = qEnvironmentVariable("FRSPF_PLUGIN_PATH");
    const QString program = QCoreApplication::applicationDirPath();
    return path.split(QDir::listSeparator(), Qt::SkipEmptyParts)
        + QStringList{
            program + QStringLiteral("/../plugins"), program + QStringLiteral("/../" FRSPF_PLUGIN_DIR)};
}

DriverPlugin findDriverPlugin(const QStringList& places)
{
    const QStringList searched = places.isEmpty() ? usualPluginPlaces() : places;
    for (const QString& place : searched) {
        for (const QString& fileName : libraries(place)) {
            if (const auto plugin = inspect(fileName))
                return *plugin;
        }
    }
    throw ConnectionError(ConnectionError::NoPlugin,
        tr("no plugin for this register in %1").arg(searched.join(QStringLiteral(", "))));
}

std::unique_ptr<QObject> createDeviceObject(const DriverPlugin& plugin)
{
    QPluginLoader loader(plugin.fileName);
    QObject* factory = loader.instance();
    if (factory == nullptr)
        throw ConnectionError(ConnectionError::NoPlugin, loader.errorString());
    QVariant object;
    if (!QMetaObject::invokeMethod(factory, "getObject", Q_RETURN_ARG(QVariant, object)))
        throw ConnectionError(ConnectionError::NoPlugin, tr("%1 has no getObject").arg(plugin.fileName));
    std::unique_ptr<QObject> device(object.value<QObject*>());
    if (!device)
        throw ConnectionError(
            ConnectionError::NoPlugin, tr("%1 gives no device object").arg(plugin.fileName));
    return device;
}

} // namespace devices
