#pragma once

#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

namespace devices {

/// The driver plugin as it was found.
struct DriverPlugin
{
    QString fileName;
    /// What Qt tells of it without loading it.
    QJsonObject metaData;
};

/// Those of the environment variable FRSPF_PLUGIN_PATH, and then where an installation and a build have it,
/// seen from the program.
QStringList usualPluginPlaces();

/// Finds the plugin that calls itself "spf" of the type "fr" in the files and folders given; without any, in
/// the usual ones. Throws ConnectionError.
DriverPlugin findDriverPlugin(const QStringList& places = {});

/// Loads it and asks its factory for a device object. Throws ConnectionError.
std::unique_ptr<QObject> createDeviceObject(const DriverPlugin& plugin);

} // namespace devices
