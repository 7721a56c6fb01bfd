#include "fault.h"

#include <algorithm>
#include <functional>

using emulator::FaultMode;

// clang-format off
const QList<FaultInfo>& faults()
{
    static const QList<FaultInfo> list{
        {FaultKind::Silence, "silence, register has not acted", FaultMode::Silence, true},
        {FaultKind::Lost, "silence, register has acted", FaultMode::Lost, true},
        {FaultKind::Late, "answer comes with the next one", FaultMode::Late, true},
        {FaultKind::Stale, "answer to an earlier command first", FaultMode::Stale, true},
        {FaultKind::Echo, "echo of the request first", FaultMode::Echo, true},
        {FaultKind::BadCheck, "answer with a wrong check value", FaultMode::BadCheck, false},
        {FaultKind::Noise, "noise before the answer", FaultMode::Noise, true},
        {FaultKind::NoiseWithin, "noise within the answer", FaultMode::None, true},
        {FaultKind::Busy, "busy (ACK) for up to a minute", FaultMode::Busy, false},
        {FaultKind::BusyTooLong, "busy (ACK) for too long", FaultMode::Busy, false},
        {FaultKind::Slow, "answer after 1 to 20 s", FaultMode::Slow, true},
        {FaultKind::Cut, "answer breaks off", FaultMode::Cut, true},
        {FaultKind::Split, "answer in pieces with pauses", FaultMode::Split, true},
        {FaultKind::Drop, "byte of the answer lost", FaultMode::Drop, true},
        {FaultKind::Flip, "byte of the answer changed", FaultMode::Flip, true},
        {FaultKind::Double, "byte of the answer doubled", FaultMode::Double, true},
        {FaultKind::PaperOut, "paper out before the register acts", FaultMode::PaperOut, true},
        {FaultKind::PaperMiddle, "paper out while the receipt prints", FaultMode::None, true},
        {FaultKind::Restart, "register restarted before acting", FaultMode::Restart, true},
        {FaultKind::RestartAfter, "register restarted after acting", FaultMode::None, true},
        {FaultKind::RequestDrop, "byte of the request lost", FaultMode::None, true},
        {FaultKind::RequestFlip, "byte of the request changed", FaultMode::None, true},
        {FaultKind::RequestDouble, "byte of the request doubled", FaultMode::None, true},
        {FaultKind::RequestHeld, "request held up on the line", FaultMode::None, true},
        {FaultKind::ReadFault, "port fault on read", FaultMode::None, true},
        {FaultKind::Unplugged, "port vanishes", FaultMode::None, true},
        {FaultKind::DeadBefore, "line dead before the request", FaultMode::None, true},
        {FaultKind::DeadAfter, "line dead after register has acted", FaultMode::None, true},
        {FaultKind::PowerCutBefore, "register loses power, nothing kept", FaultMode::None, true},
        {FaultKind::PowerCutAfter, "register loses power, document kept", FaultMode::None, true},
        {FaultKind::HostKilledBefore, "host killed before the request", FaultMode::None, true},
        {FaultKind::HostKilledAfter, "host killed before the answer", FaultMode::None, true},
        {FaultKind::HostKilledAtJournal, "host killed at its journal", FaultMode::None, true},
        {FaultKind::NeighbourSells, "a neighbour sells", FaultMode::None, true},
        {FaultKind::NeighbourSellsTheSame, "a neighbour sells the same", FaultMode::None, true},
        {FaultKind::NeighbourPutsCashIn, "a neighbour puts cash in", FaultMode::None, true},
        {FaultKind::NeighbourClosesShift, "a neighbour closes the shift", FaultMode::None, true},
        {FaultKind::NeighbourPrintsTotals, "a neighbour prints an X-report", FaultMode::None, true},
        {FaultKind::NeighbourRegisters, "a neighbour registers the register", FaultMode::None, true},
    };
    return list;
}
// clang-format on

const FaultInfo& faultInfo(FaultKind kind)
{
    return *std::find_if(
        faults().cbegin(), faults().cend(), [kind](const FaultInfo& info) { return info.kind == kind; });
}

namespace {

FaultKind drawOf(Random& random, const std::function<bool(const FaultInfo&)>& mayBe)
{
    QList<FaultKind> kinds;
    for (const FaultInfo& info : faults()) {
        if (mayBe(info))
            kinds.append(info.kind);
    }
    return kinds.at(random.below(kinds.size()));
}

} // namespace

FaultKind drawFault(Protocol protocol, const Hazards& hazards, Random& random)
{
    return drawOf(random, [&](const FaultInfo& info) {
        // That one happens where nothing is exchanged.
        if (isNeighbour(info.kind) || info.kind == FaultKind::HostKilledAtJournal)
            return false;
        return (info.onXml || protocol == Protocol::Hex) && (hazards.killsHost || !isHostKill(info.kind))
            && (hazards.cutsPower || !isPowerCut(info.kind));
    });
}

FaultKind drawDeed(Random& random)
{
    return drawOf(random, [](const FaultInfo& info) { return isNeighbour(info.kind); });
}

emulator::Fault registerFault(FaultKind kind, Random& random)
{
    if (kind == FaultKind::None)
        return {};
    int argument = random.below(4096);
    if (kind == FaultKind::Busy || kind == FaultKind::Split)
        argument = random.between(3, 60);
    else if (kind == FaultKind::BusyTooLong)
        argument = random.between(110, 300);
    else if (kind == FaultKind::Slow)
        argument = random.between(1, 20);
    return {faultInfo(kind).mode, argument};
}
