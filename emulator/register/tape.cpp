#include "register/tape.h"

#include "tape/pagetext.h"

namespace emulator {

void Tape::print(const tape::Page& page)
{
    if (m_listener)
        m_listener(page);
    else
        m_pages.append(page);
}

QStringList Tape::lines() const
{
    QStringList lines;
    for (const tape::Page& page : m_pages)
        lines += tape::toText(page);
    return lines;
}

} // namespace emulator
