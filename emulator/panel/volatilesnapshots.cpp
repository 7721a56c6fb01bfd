#include "panel/volatilesnapshots.h"

#include "register/register.h"

namespace emulator::panel {

void VolatileSnapshots::keep(const QString& name)
{
    m_kept.insert(name, m_device.snapshot());
}

void VolatileSnapshots::restore(const QString& name)
{
    if (const auto kept = m_kept.constFind(name); kept != m_kept.cend())
        m_device.restore(*kept);
}

void VolatileSnapshots::reset(const QString& driveNumber)
{
    m_device.reset(driveNumber);
}

} // namespace emulator::panel
