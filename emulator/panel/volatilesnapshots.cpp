#include "panel/volatilesnapshots.h"

#include "register/register.h"

namespace emulator::panel {

VolatileSnapshots::VolatileSnapshots(Register& device)
    : m_device(device)
    , m_factory(device.snapshot())
{
}

void VolatileSnapshots::keep(const QString& name)
{
    m_kept.insert(name, m_device.snapshot());
}

void VolatileSnapshots::restore(const QString& name)
{
    if (const auto kept = m_kept.constFind(name); kept != m_kept.cend())
        m_device.restore(*kept);
}

void VolatileSnapshots::reset()
{
    m_device.restore(m_factory);
}

} // namespace emulator::panel
