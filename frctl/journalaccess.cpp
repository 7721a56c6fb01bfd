#include "journalaccess.h"

#include "journalplace.h"

#include <QFile>

namespace frctl {

QString JournalAccess::place() const
{
    return m_fileName.isEmpty() ? sale::journalPlace() : m_fileName;
}

bool JournalAccess::exists() const
{
    return m_store || QFile::exists(place());
}

void JournalAccess::requirePlace() const
{
    sale::requireJournalPlace(place());
}

sale::SqliteStore& JournalAccess::store()
{
    if (m_store)
        return *m_store;
    auto store = std::make_unique<sale::SqliteStore>(place());
    if (m_fileName.isEmpty() && !qEnvironmentVariableIsSet("FRSPF_JOURNAL"))
        store->takeOver(sale::formerJournalPlace());
    m_store = std::move(store);
    return *m_store;
}

} // namespace frctl
