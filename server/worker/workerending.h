#pragma once

namespace frserver {

/// The service is gone, or wants no more of this worker: thrown out of the device while a driver waits for
/// the register and no document is under way. It derives from nothing, since a driver that goes on after a
/// failed exchange must not go on after this one.
class WorkerEnding
{
};

} // namespace frserver
