#pragma once

#include "portholders.h"
#include "portinfo.h"
#include "registerprobe.h"
#include "secondconnection.h"

#include <QJsonObject>
#include <QStringList>

namespace frctl {

/// A port of the command detect.
struct DetectedPort
{
    devices::PortInfo info = {};
    /// Not asked then.
    QList<devices::PortHolder> holders = {};
    /// The last one has found the register, if any has.
    QList<Probe> probes = {};

    /// Nothing but for a register behind a TCP port, and there when it could not be tried.
    std::optional<SecondConnection> secondConnection = {};

    /// Null without one.
    const Probe* found() const
    {
        return probes.isEmpty() || !probes.constLast().found ? nullptr : &probes.constLast();
    }
    /// A register is there, and has no time for questions.
    bool isAtWork() const { return !probes.isEmpty() && probes.constLast().isAtWork; }
    /// The name for a configuration: that of the port, or what the caller called it.
    QString givenName = {};
    QString lastingName() const { return givenName.isEmpty() ? info.stableName() : givenName; }
};

/// With those who hold it. The name is that by which the caller knows the port.
DetectedPort detectedPort(const devices::PortInfo& info, const QString& givenName = {});
/// "ModemManager (process 412)"
QString holdersText(const QList<devices::PortHolder>& holders);
/// What came of asking it.
QStringList portLines(const DetectedPort& port);
/// The number is that of the section, which stands there where a register was found.
QJsonObject portJson(const DetectedPort& port, qsizetype number);
/// What asks the register for its status, and takes no other one.
QString commandLineFor(const DetectedPort& port);
/// A section for the configuration, named by the number.
QStringList sectionFor(const DetectedPort& port, qsizetype number);
/// The same for the configuration of a service; what is for a person to say stands there as a comment.
QStringList serviceSectionFor(const DetectedPort& port, qsizetype number);

} // namespace frctl
