#include "worker/patientstore.h"

#include "errorkind.h"

namespace frserver {

using sale::ErrorKind;

void PatientStore::setPatientFor(const QString& id, bool mayHaveRestarted)
{
    m_id = id;
    m_mayHaveRestarted = mayHaveRestarted;
    m_isOfRegister = false;
}

void PatientStore::note(const QString& id, int attempt, const sale::AttemptNote& note)
{
    SqliteStore::note(id, attempt, note);
    const QString kind = note.failure.value(QStringLiteral("kind")).toString();
    if (id == m_id && !kind.isEmpty())
        m_isOfRegister = isOfRegister(sale::errorKindNamed(kind));
}

bool PatientStore::isOfRegister(ErrorKind kind) const
{
    return kind == ErrorKind::Paper || kind == ErrorKind::Cover
        || (kind == ErrorKind::Other && m_mayHaveRestarted);
}

void PatientStore::settle(const QString& id, int attempt, const sale::DocumentEnding& ending)
{
    sale::DocumentEnding meant = ending;
    meant.waitsAgain = id == m_id && m_isOfRegister;
    SqliteStore::settle(id, attempt, meant);
}

} // namespace frserver
