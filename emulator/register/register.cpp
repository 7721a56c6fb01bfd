#include "register/register.h"

#include "register/printing.h"

namespace emulator {

void Register::setPaper(bool isIn)
{
    if (isIn)
        printing::renewPaper(m_parts);
    m_parts.state.paper.isIn = isIn;
}

void Register::setPaperLeft(int lines, bool quietly)
{
    m_parts.state.paper.linesLeft = lines;
    m_parts.state.paper.endsQuietly = quietly;
}

void Register::setOperatorReachable(bool reachable)
{
    m_parts.state.isOperatorReachable = reachable;
    if (reachable)
        m_parts.drive.sendAll();
}

} // namespace emulator
