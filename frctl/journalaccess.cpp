#include "journalaccess.h"

#include "journalerror.h"
#include "journalplace.h"
#include "machinestore.h"
#include "portname.h"
#include "postgres/openstore.h"
#include "registertaken.h"
#include "sqlitestore.h"

#include <QFile>

namespace frctl {

QString JournalAccess::place() const
{
    if (!m_fileName.isEmpty())
        return m_fileName;
    const QString shared = qEnvironmentVariableIsSet("FRSPF_JOURNAL") ? QString() : machineStore();
    return shared.isEmpty() ? sale::journalPlace() : shared;
}

bool JournalAccess::exists() const
{
    return m_store || sale::isShared(place()) || QFile::exists(place());
}

void JournalAccess::requirePlace() const
{
    if (!sale::isShared(place()))
        sale::requireJournalPlace(place());
}

void JournalAccess::requireFreeLine(const QString& port, bool isExclusive)
{
    if (!devices::isTcpName(port))
        return;
    try {
        if (sale::isShared(place()))
            store().requireFreeLine(devices::networkAddress(port), !isExclusive);
    } catch (const sale::RegisterTaken&) {
        throw;
    } catch (const sale::JournalError&) {
        // Whatever wants the journal says so.
    }
}

sale::SqlStore& JournalAccess::store()
{
    if (m_store)
        return *m_store;
    // Whoever has it locked is not waited for twice.
    if (m_fault)
        std::rethrow_exception(m_fault);
    try {
        m_store = opened();
    } catch (const sale::JournalError&) {
        m_fault = std::current_exception();
        throw;
    }
    return *m_store;
}

std::unique_ptr<sale::SqlStore> JournalAccess::opened() const
{
    const QString name = place();
    if (sale::isShared(name))
        return sale::openStore(name);
    auto store = std::make_unique<sale::SqliteStore>(name);
    if (m_fileName.isEmpty() && !qEnvironmentVariableIsSet("FRSPF_JOURNAL"))
        store->takeOver(sale::formerJournalPlace());
    return store;
}

} // namespace frctl
