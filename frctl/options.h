#pragma once

#include "driveroptions.h"
#include "fruser.h"
#include "markreading.h"

#include <QString>
#include <QStringList>

namespace frctl {

/// What the command line says.
struct Options
{
    enum LogLevel { Trace, Debug, Info, Warn, Error };

    QString port;
    QString protocol = QStringLiteral("XML");
    /// Empty for the plugin's own.
    QString protocolVersion;
    /// Files or folders.
    QStringList plugins;
    unsigned deviceId = 0;
    /// How long to wait for a port that another program has.
    int waitSeconds = 0;
    bool speedEnumerate = true;
    hw::fr::DriverOptions driverOptions;
    FrUser cashier;
    /// Names with commas between them.
    QString taxSystems;
    bool clear = false;
    /// The caller's name for a sale; empty for a sale without.
    QString id;
    /// Where the sales with an id are kept.
    QString journalFile;
    LogLevel logLevel = Error;
    bool json = false;
    bool help = false;
    bool version = false;
    QString command;
    QStringList arguments;

    bool isHex() const { return protocol == QStringLiteral("HEX"); }
    /// HEX answers have a check value, XML answers have none.
    sale::MarkReading markReading() const { return sale::markReadingFor(isHex()); }
};

/// Throws UsageError. The first argument is the program's name.
Options parseOptions(const QStringList& commandLine);
/// The text of --help, without the commands.
QString optionsHelp();

} // namespace frctl
