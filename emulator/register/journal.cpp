#include "register/journal.h"

namespace emulator {

void Journal::add(const QJsonObject& entry)
{
    if (m_listener)
        m_listener(entry);
    else
        m_entries.append(entry);
}

} // namespace emulator
