#pragma once

#include "line/faultplan.h"
#include "random.h"

#include <QList>

enum class Protocol { Hex, Xml };

/// How an exchange goes wrong. Each is played either by the software register or by the line.
enum class FaultKind {
    None,
    Silence,
    Lost,
    Late,
    Stale,
    Echo,
    BadCheck,
    Noise,
    NoiseWithin,
    Busy,
    BusyTooLong,
    Slow,
    Cut,
    Split,
    Drop,
    Flip,
    Double,
    PaperOut,
    PaperMiddle,
    Restart,
    RestartAfter,
    RequestDrop,
    RequestFlip,
    RequestDouble,
    RequestHeld,
    ReadFault,
    Unplugged,
    DeadBefore,
    DeadAfter
};

struct FaultInfo
{
    FaultKind kind;
    const char* text;
    /// None for the faults of the line.
    emulator::FaultMode mode;
    /// The XML protocol knows neither busy registers nor check values.
    bool onXml;
};

const QList<FaultInfo>& faults();
const FaultInfo& faultInfo(FaultKind kind);
FaultKind drawFault(Protocol protocol, Random& random);
/// The register's part of the fault.
emulator::Fault registerFault(FaultKind kind, Random& random);
