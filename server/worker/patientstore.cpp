#include "worker/patientstore.h"

#include "errorkind.h"
#include "postgres/openstore.h"
#include "postgres/postgresstore.h"

namespace frserver {

using sale::ErrorKind;

PatientStore::PatientStore(
    const QString& place, bool closesShift, const WorkerLease& lease, const QString& registerName)
    : m_store(sale::openStore(place))
    , m_closesShift(closesShift)
    , m_lease(lease)
{
    const std::optional<sale::LeasedRegister> given = lease.of(registerName);
    m_shared = given ? dynamic_cast<sale::PostgresStore*>(m_store.get()) : nullptr;
    if (m_shared != nullptr)
        m_shared->writeAs(*given);
}

std::optional<sale::RegisterFence> PatientStore::fence()
{
    return m_shared == nullptr ? std::nullopt : std::optional(m_shared->fence());
}

void PatientStore::setPatientFor(const QString& id, bool mayHaveRestarted)
{
    m_id = id;
    m_mayHaveRestarted = mayHaveRestarted;
    m_isOfRegister = false;
}

void PatientStore::note(const QString& id, int attempt, const sale::AttemptNote& note)
{
    m_store->note(id, attempt, note);
    const QString kind = note.failure.value(QStringLiteral("kind")).toString();
    if (id == m_id && !kind.isEmpty())
        m_isOfRegister = isOfRegister(sale::errorKindNamed(kind));
}

bool PatientStore::isOfRegister(ErrorKind kind) const
{
    return kind == ErrorKind::Paper || kind == ErrorKind::Cover
        || (kind == ErrorKind::ShiftExpired && m_closesShift)
        || (kind == ErrorKind::Other && m_mayHaveRestarted);
}

void PatientStore::settle(const QString& id, int attempt, const sale::DocumentEnding& ending)
{
    sale::DocumentEnding meant = ending;
    meant.waitsAgain = id == m_id && m_isOfRegister;
    m_store->settle(id, attempt, meant);
}

sale::StoredDocument PatientStore::accept(const sale::DocumentRequest& request, const Condition& condition)
{
    return m_store->accept(request, condition);
}

std::optional<int> PatientStore::begin(const QString& id, const sale::AttemptStart& start)
{
    m_lease.require();
    return m_store->begin(id, start);
}

std::optional<int> PatientStore::acceptAndBegin(
    const sale::DocumentRequest& request, const sale::AttemptStart& start)
{
    m_lease.require();
    return m_store->acceptAndBegin(request, start);
}

QList<sale::StoredDocument> PatientStore::find(const sale::DocumentQuery& query) const
{
    return m_store->find(query);
}

sale::StoredDocument PatientStore::withdraw(const QString& id)
{
    return m_store->withdraw(id);
}

sale::StoredDocument PatientStore::move(const QString& id, const QString& registerName)
{
    return m_store->move(id, registerName);
}

sale::StoredDocument PatientStore::refuse(const QString& id, const sale::AttemptNote& note)
{
    return m_store->refuse(id, note);
}

QStringList PatientStore::expire()
{
    return m_store->expire();
}

void PatientStore::requireRoom()
{
    m_store->requireRoom();
}

bool PatientStore::isMoved() const
{
    return m_store->isMoved();
}

QDateTime PatientStore::timeNow() const
{
    return m_store->timeNow();
}

QDateTime PatientStore::silentSince(const sale::StoredDocument& document)
{
    return m_store->silentSince(document);
}

} // namespace frserver
