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
    DeadAfter,
    NeighbourSells,
    NeighbourPutsCashIn,
    NeighbourClosesShift,
    NeighbourPrintsTotals
};

/// Another program that makes a document between two exchanges of ours: no fault of the line.
constexpr bool isNeighbour(FaultKind kind)
{
    return kind >= FaultKind::NeighbourSells;
}

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
FaultKind drawFault(Protocol protocol, bool hasNeighbour, Random& random);
/// The register's part of the fault.
emulator::Fault registerFault(FaultKind kind, Random& random);
