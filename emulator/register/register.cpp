#include "register/register.h"

namespace emulator {

void Register::setOperatorReachable(bool reachable)
{
    m_parts.state.isOperatorReachable = reachable;
    if (reachable)
        m_parts.drive.sendAll();
}

} // namespace emulator
