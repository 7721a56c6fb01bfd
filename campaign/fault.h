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
    PowerCutBefore,
    PowerCutAfter,
    HostKilledBefore,
    HostKilledAfter,
    HostKilledAtJournal,
    NeighbourSells,
    NeighbourSellsTheSame,
    NeighbourPutsCashIn,
    NeighbourClosesShift,
    NeighbourPrintsTotals,
    NeighbourRegisters
};

/// Another program that makes a document between two exchanges of ours: no fault of the line.
constexpr bool isNeighbour(FaultKind kind)
{
    return kind >= FaultKind::NeighbourSells;
}

/// The register keeps its state in a folder, loses its power, and comes back with what it kept.
constexpr bool isPowerCut(FaultKind kind)
{
    return kind == FaultKind::PowerCutBefore || kind == FaultKind::PowerCutAfter;
}

/// The host's program ends without a word. At its journal that happens between two exchanges.
constexpr bool isHostKill(FaultKind kind)
{
    return kind >= FaultKind::HostKilledBefore && kind <= FaultKind::HostKilledAtJournal;
}

/// What may happen beside the faults of the line and of the answers.
struct Hazards
{
    bool killsHost = false;
    bool cutsPower = false;
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
/// Of an exchange; a neighbour's deeds are drawn apart.
FaultKind drawFault(Protocol protocol, const Hazards& hazards, Random& random);
FaultKind drawDeed(Random& random);
/// The register's part of the fault.
emulator::Fault registerFault(FaultKind kind, Random& random);
