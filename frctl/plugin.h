#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace frctl {

/// The driver plugin as it was found.
struct PluginFile
{
    QString fileName;
    /// What Qt tells of it without loading it.
    QJsonObject metaData;
};

/// Finds the plugin that calls itself "spf" of the type "fr" in the files and folders given; without any, in
/// those of the environment variable FRSPF_PLUGIN_PATH and then beside the program. Throws HostError.
PluginFile findPlugin(const QStringList& places);

/// Loads it and asks its factory for a device object. Throws HostError.
std::unique_ptr<QObject> createDeviceObject(const PluginFile& plugin);

} // namespace frctl
