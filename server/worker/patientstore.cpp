#include "worker/patientstore.h"

#include "errorkind.h"

namespace frserver {

using sale::ErrorKind;

void PatientStore::setPatientFor(const QString& id)
{
    m_id = id;
    m_isOfPaper = false;
}

void PatientStore::note(const QString& id, int attempt, const sale::AttemptNote& note)
{
    SqliteStore::note(id, attempt, note);
    const QString kind = note.failure.value(QStringLiteral("kind")).toString();
    if (id == m_id && !kind.isEmpty())
        m_isOfPaper
            = kind == sale::errorKindName(ErrorKind::Paper) || kind == sale::errorKindName(ErrorKind::Cover);
}

void PatientStore::settle(const QString& id, int attempt, const sale::DocumentEnding& ending)
{
    sale::DocumentEnding meant = ending;
    meant.waitsAgain = id == m_id && m_isOfPaper;
    SqliteStore::settle(id, attempt, meant);
}

} // namespace frserver
