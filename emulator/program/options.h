#pragma once

#include "line/faultplan.h"
#include "program/protocolswitch.h"
#include "program/tcpconnections.h"

#include <QStringList>

#include <optional>

/// What the program was asked to do.
struct Options
{
    /// Of the pseudo terminal that is the line where there is no port; empty for none.
    QString link;
    std::optional<quint16> port;
    TcpConnections connections = TcpConnections::Last;
    int baudRate = 0;
    emulator::ProtocolChoice protocol = emulator::ProtocolChoice::Auto;
    QString tapeFile;
    QString journalFile;
    QString conformanceFile;
    /// Folder that the register keeps its memory in; empty for a register without.
    QString stateFolder;
    /// Names of the snapshots to keep and to restore before the start; empty for none.
    QString snapshot;
    QString restore;
    /// No line was asked for: there is something else to do.
    bool isWithoutLine = false;
    /// Empty for none, "-" for standard error.
    QString traceFile;
    /// Nothing in it is masked.
    bool isTraceFull = false;
    bool quiet = false;
    bool lenient = false;
    bool resetPassword = false;
    bool paperOut = false;
    bool operatorReachable = false;
    /// Prices of positions choose faults.
    bool magic = false;
    /// How many registers there are.
    int registers = 1;
    /// Port of the control interface, 0 for any that is free; no value for none.
    std::optional<quint16> panelPort;
    QString panelAddress = QStringLiteral("127.0.0.1");
    /// Empty for none.
    QByteArray panelToken;
    /// By which it is asked for, besides the machine's own.
    QStringList panelHosts;
    /// Milliseconds by which the register's clock is ahead of the computer's.
    qint64 clockAhead = 0;
    emulator::Identity identity;
    emulator::FaultPlan faults;

    /// Names of the options that were given; the others are as the house has them.
    QStringList given;
    bool isGiven(const char* name) const { return given.contains(QLatin1String(name)); }

    enum class Outcome { Run, Done, Wrong };
    /// Reads the command line; prints what there is to say itself.
    static Outcome parse(const QStringList& arguments, Options& options);
};
