#pragma once

#include "driveroptions.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace devices {

class LineObserver;

/// Where a register is, and what its driver is told before it starts.
struct ConnectionSettings
{
    /// As for createSerialDevice.
    QString port;
    /// "XML" or "HEX".
    QString protocol = QStringLiteral("XML");
    /// Files and folders that the plugin is looked for in, see findDriverPlugin.
    QStringList plugins = {};
    /// How long to wait for a port that another program has.
    int waitSeconds = 0;
    /// The port is this program's by another connection, which outlives this one: a second one beside it.
    bool isLockHeld = false;
    /// See StreamDevice::setWaitCallback; also called while the port is waited for. May be empty.
    std::function<void()> waitCallback = {};
    /// See StreamDevice::setSilenceCallback. May be empty.
    std::function<void(bool hasAnswered)> silenceCallback = {};
    /// See StreamDevice::setBudget; counted from the lock that was taken. 0 for as long as the driver likes.
    int budgetMs = 0;
    /// Told what goes over the line; outlives the connection. Null for none.
    LineObserver* observer = nullptr;
    /// Of the XML envelope; empty for the plugin's own.
    QString protocolVersion = {};
    /// Number of the register in the log.
    unsigned deviceId = 0;
    /// Repeated connections may try other speeds.
    bool speedEnumerate = true;
    hw::fr::DriverOptions driverOptions = {};
};

} // namespace devices
