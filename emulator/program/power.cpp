#include "program/power.h"

#include "memory/memoryerror.h"
#include "register/parametertable.h"
#include "register/settingtable.h"

namespace power {

namespace {

void compare(const Options& options, const char* option, const QString& kept, const QString& wanted)
{
    if (options.isGiven(option) && kept != wanted)
        throw emulator::MemoryError(
            QStringLiteral("its --%1 is %2, not %3; take another folder, or leave the option out")
                .arg(QLatin1String(option), kept.trimmed(), wanted.trimmed()));
}

// What the state is of stays as it is.
void adopt(Options& options, const emulator::Identity& kept)
{
    emulator::Identity& identity = options.identity;
    compare(options, "drive", kept.driveNumber, identity.driveNumber);
    compare(options, "serial", kept.serialNumber, identity.serialNumber);
    compare(options, "model", QString::number(kept.model), QString::number(identity.model));
    for (const char* const option : {"drive-phase", "drive-documents-left", "drive-days-left"}) {
        if (options.isGiven(option))
            throw emulator::MemoryError(
                QStringLiteral("its fiscal drive is in the middle of its life; --%1 is for a new state")
                    .arg(QLatin1String(option)));
    }
    identity.driveNumber = kept.driveNumber;
    identity.serialNumber = kept.serialNumber;
    identity.model = kept.model;
}

} // namespace

std::unique_ptr<emulator::Memory> openMemory(Options& options)
{
    if (options.stateFolder.isEmpty())
        return nullptr;
    auto folder = std::make_unique<emulator::StateFolder>(options.stateFolder);
    if (!options.snapshot.isEmpty())
        folder->keepSnapshot(options.snapshot);
    if (!options.restore.isEmpty())
        folder->restoreSnapshot(options.restore);
    auto memory = std::make_unique<emulator::Memory>(std::move(folder));
    if (const std::optional<emulator::Identity> kept = memory->identity())
        adopt(options, *kept);
    return memory;
}

void switchOn(emulator::Register& device, emulator::Memory* memory, const Options& options)
{
    if (memory != nullptr)
        memory->load(device, options.clockAhead);
    if (options.isGiven("clock"))
        device.resetClock();
    if (options.isGiven("width"))
        device.settings().set(emulator::setting::width, QString::number(options.identity.width));
    if (options.resetPassword)
        device.parameters().reset(emulator::parameter::password);
    if (options.paperOut)
        device.setPaper(false);
    device.setOperatorReachable(options.operatorReachable);
    if (memory != nullptr)
        memory->save(device);
}

} // namespace power
