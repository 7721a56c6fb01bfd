#include "api/openlist.h"

#include "api/place.h"

namespace frserver {

using sale::DocumentState;

const QList<DocumentState>& OpenList::states()
{
    static const QList<DocumentState> all{
        DocumentState::Queued, DocumentState::Running, DocumentState::Unknown};
    return all;
}

void OpenList::add(const QString& id, const Entry& entry)
{
    m_entries.insert(id, entry);
    ++m_counts[{entry.place, entry.state}];
    if (entry.state == DocumentState::Queued)
        m_queued[entry.place].insert(entry.queued);
}

void OpenList::remove(const QString& id)
{
    const auto found = m_entries.constFind(id);
    if (found == m_entries.cend())
        return;
    --m_counts[{found->place, found->state}];
    if (found->state == DocumentState::Queued) {
        std::multiset<QDateTime>& queued = m_queued[found->place];
        queued.erase(queued.find(found->queued));
    }
    m_entries.erase(found);
}

void OpenList::takeOver(const sale::StoredDocument& document)
{
    remove(document.request.id);
    add(document.request.id, {document.state, Place::of(document.request), document.queued, m_sweep});
}

bool OpenList::see(const sale::StoredDocument& document)
{
    const auto known = m_entries.find(document.request.id);
    if (known == m_entries.end() || known->state != document.state
        || known->place != Place::of(document.request))
        return false;
    known->seen = m_sweep;
    return true;
}

QStringList OpenList::unseen() const
{
    QStringList ids;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (entry->seen != m_sweep)
            ids.append(entry.key());
    }
    return ids;
}

bool OpenList::note(const sale::StoredDocument& document)
{
    const QString& id = document.request.id;
    const QString place = Place::of(document.request);
    const auto known = m_entries.constFind(id);
    // What is final was open before, or it was told already.
    if (known == m_entries.cend() ? isFinal(document.state)
                                  : known->state == document.state && known->place == place)
        return false;
    remove(id);
    if (!isFinal(document.state))
        add(id, {document.state, place, document.queued, m_sweep});
    if (isFinal(document.state) || document.state == DocumentState::Unknown)
        ++m_endings[{place, sale::stateName(document.state), sale::reasonName(document.reason)}];
    return true;
}

QStringList OpenList::outdated(const QString& place, const QList<sale::StoredDocument>& open) const
{
    QHash<QString, DocumentState> states;
    for (const sale::StoredDocument& document : open)
        states.insert(document.request.id, document.state);
    QStringList ids;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        const auto state = states.constFind(entry.key());
        const bool isSame = state != states.cend() && *state == entry->state;
        if (entry->place == place && !isSame)
            ids.append(entry.key());
    }
    return ids;
}

QStringList OpenList::waitedFor() const
{
    QStringList places;
    for (const auto& [place, queued] : m_queued) {
        if (!queued.empty())
            places.append(place);
    }
    return places;
}

int OpenList::count(const QString& place, DocumentState state) const
{
    const auto found = m_counts.find({place, state});
    return found == m_counts.end() ? 0 : found->second;
}

QDateTime OpenList::oldestQueued(const QString& place) const
{
    const auto found = m_queued.find(place);
    return found == m_queued.end() || found->second.empty() ? QDateTime() : *found->second.begin();
}

} // namespace frserver
