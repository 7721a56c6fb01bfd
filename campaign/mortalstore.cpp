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

sale::StoredDocument MortalStore::accept(const sale::DocumentRequest& request, const Condition& condition)
{
    return mortal([&] { return m_kept.accept(request, condition); });
}

std::optional<int> MortalStore::begin(const QString& id, const sale::AttemptStart& start)
{
    return mortal([&] { return m_kept.begin(id, start); });
}

std::optional<int> MortalStore::acceptAndBegin(
    const sale::DocumentRequest& request, const sale::AttemptStart& start)
{
    return mortal([&] { return m_kept.acceptAndBegin(request, start); });
}

sale::StoredDocument MortalStore::withdraw(const QString& id)
{
    return mortal([&] { return m_kept.withdraw(id); });
}

sale::StoredDocument MortalStore::move(const QString& id, const QString& registerName)
{
    return mortal([&] { return m_kept.move(id, registerName); });
}

sale::StoredDocument MortalStore::refuse(const QString& id, const sale::AttemptNote& note)
{
    return mortal([&] { return m_kept.refuse(id, note); });
}

QStringList MortalStore::expire()
{
    return mortal([&] { return m_kept.expire(); });
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
