#include "panel/tapelog.h"

#include "panel/packedpage.h"
#include "register/fiscaldrive.h"

namespace emulator::panel {

int TapeLog::add(
    const QDateTime& dateTime, quint32 document, const FiscalDrive& drive, const tape::Page& page)
{
    const FiscalRecord* const record = drive.find(document);
    m_entries.push_back({++m_last, dateTime, record == nullptr ? 0 : document,
        record == nullptr ? QString() : record->sign, packedpage::packed(page), std::nullopt});
    if (m_entries.size() > mostEntries)
        m_entries.pop_front();
    return m_last;
}

void TapeLog::follow(const FiscalDrive& drive)
{
    for (TapeEntry& entry : m_entries) {
        if (!drive.has(entry.document, entry.sign))
            entry.document = 0;
    }
}

const TapeEntry* TapeLog::find(int number) const
{
    return number < first() || number > m_last ? nullptr : &m_entries[static_cast<size_t>(number - first())];
}

} // namespace emulator::panel
