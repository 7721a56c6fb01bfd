#include "register/tape.h"

namespace emulator {

void Tape::print(const QStringList& lines)
{
    if (m_listener)
        m_listener(lines);
    else
        m_lines += lines;
}

} // namespace emulator
