#include "journalaccess.h"

#include "journalerror.h"
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
    // Whoever has it locked is not waited for twice.
    if (!m_fault.isEmpty())
        throw sale::JournalError(m_fault);
    try {
        m_store = opened();
    } catch (const sale::JournalError& error) {
        m_fault = QString::fromUtf8(error.what());
        throw;
    }
    return *m_store;
}

std::unique_ptr<sale::SqliteStore> JournalAccess::opened() const
{
    auto store = std::make_unique<sale::SqliteStore>(place());
    if (m_fileName.isEmpty() && !qEnvironmentVariableIsSet("FRSPF_JOURNAL"))
        store->takeOver(sale::formerJournalPlace());
    return store;
}

} // namespace frctl
