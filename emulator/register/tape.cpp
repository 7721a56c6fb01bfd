#include "register/tape.h"

#include "tape/pagetext.h"

namespace emulator {

void Tape::print(const tape::Page& page, quint32 document)
{
    if (m_listener)
        m_listener(page, document);
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
