#include "panel/tapelog.h"

#include "panel/packedpage.h"

namespace emulator::panel {

int TapeLog::add(const QDateTime& dateTime, quint32 document, const tape::Page& page)
{
    m_entries.push_back({++m_last, dateTime, document, packedpage::packed(page), std::nullopt});
    if (m_entries.size() > mostEntries)
        m_entries.pop_front();
    return m_last;
}

const TapeEntry* TapeLog::find(int number) const
{
    return number < first() || number > m_last ? nullptr : &m_entries[static_cast<size_t>(number - first())];
}

} // namespace emulator::panel
