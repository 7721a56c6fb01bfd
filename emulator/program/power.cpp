#include "program/power.h"

#include "memory/memoryerror.h"
#include "register/parametertable.h"

namespace power {

namespace {

void compare(const char* what, const QString& kept, const QString& wanted, bool isGiven)
{
    if (isGiven && kept != wanted)
        throw emulator::MemoryError(
            QStringLiteral("it is of the %1 %2, not %3; take another folder, or leave the option out")
                .arg(QLatin1String(what), kept.trimmed(), wanted.trimmed()));
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
    if (const std::optional<emulator::Identity> kept = memory->identity()) {
        emulator::Identity& identity = options.identity;
        compare("fiscal drive", kept->driveNumber, identity.driveNumber, options.isDriveGiven);
        compare("register", kept->serialNumber, identity.serialNumber, options.isSerialGiven);
        compare("model", QString::number(kept->model), QString::number(identity.model), options.isModelGiven);
        identity.driveNumber = kept->driveNumber;
        identity.serialNumber = kept->serialNumber;
        identity.model = kept->model;
    }
    return memory;
}

void switchOn(emulator::Register& device, emulator::Memory* memory, const Options& options)
{
    if (memory != nullptr)
        memory->load(device, options.clockAhead);
    if (options.isClockGiven)
        device.resetClock();
    if (options.resetPassword)
        device.parameters().reset(emulator::parameter::password);
    if (options.paperOut)
        device.setPaper(false);
    device.setOperatorReachable(options.operatorReachable);
    if (memory != nullptr)
        memory->save(device);
}

} // namespace power
