#include "mortalstore.h"

void MortalStore::setKills(Random* random, int permille)
{
    m_random = random;
    m_permille = permille;
}

void MortalStore::mayDie()
{
    m_line.requireHost();
    if (m_random != nullptr && m_random->chance(m_permille))
        m_line.killHost(FaultKind::HostKilledAtJournal);
}

sale::StoredDocument MortalStore::accept(const sale::DocumentRequest& request)
{
    mayDie();
    sale::StoredDocument document = m_kept.accept(request);
    mayDie();
    return document;
}

std::optional<int> MortalStore::begin(const QString& id, const sale::AttemptStart& start)
{
    mayDie();
    const std::optional<int> attempt = m_kept.begin(id, start);
    mayDie();
    return attempt;
}

void MortalStore::note(const QString& id, int attempt, const sale::AttemptNote& note)
{
    mayDie();
    m_kept.note(id, attempt, note);
    mayDie();
}

void MortalStore::settle(const QString& id, int attempt, const sale::DocumentEnding& ending)
{
    mayDie();
    m_kept.settle(id, attempt, ending);
    mayDie();
}

QList<sale::StoredDocument> MortalStore::find(const sale::DocumentQuery& query) const
{
    m_line.requireHost();
    return m_kept.find(query);
}
