#include "register/refusals.h"

namespace emulator {

void Refusals::add(const RefusedRequest& refused)
{
    if (m_all.size() >= mostKept)
        m_all.removeFirst();
    m_all.append(refused);
    if (m_listener)
        m_listener(refused);
}

} // namespace emulator
