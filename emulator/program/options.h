#pragma once

#include "line/faultplan.h"
#include "program/protocolswitch.h"

#include <QStringList>

#include <optional>

/// What the program was asked to do.
struct Options
{
    QString link;
    std::optional<quint16> port;
    int baudRate = 0;
    emulator::ProtocolChoice protocol = emulator::ProtocolChoice::Auto;
    QString tapeFile;
    QString journalFile;
    QString conformanceFile;
    bool trace = false;
    bool quiet = false;
    bool lenient = false;
    bool resetPassword = false;
    bool paperOut = false;
    bool operatorReachable = false;
    /// Milliseconds by which the register's clock is ahead of the computer's.
    qint64 clockAhead = 0;
    emulator::Identity identity;
    emulator::FaultPlan faults;

    enum class Outcome { Run, Done, Wrong };
    /// Reads the command line; prints what there is to say itself.
    static Outcome parse(const QStringList& arguments, Options& options);
};
