#include "api/openlist.h"

#include <algorithm>

namespace frserver {

using sale::DocumentState;

void OpenList::takeOver(const sale::StoredDocument& document)
{
    m_entries.insert(document.request.id, {document.state, document.request.registerName, document.queued});
}

bool OpenList::note(const sale::StoredDocument& document)
{
    const QString& id = document.request.id;
    const QString& name = document.request.registerName;
    const auto known = m_entries.constFind(id);
    // What is final was open before, or it was told already.
    if (known == m_entries.cend() ? isFinal(document.state)
                                  : known->state == document.state && known->registerName == name)
        return false;
    if (isFinal(document.state))
        m_entries.remove(id);
    else
        m_entries.insert(id, {document.state, name, document.queued});
    if (isFinal(document.state) || document.state == DocumentState::Unknown)
        ++m_endings[{name, sale::stateName(document.state), sale::reasonName(document.reason)}];
    return true;
}

QStringList OpenList::outdated(const QString& registerName, const QList<sale::StoredDocument>& open) const
{
    QHash<QString, DocumentState> states;
    for (const sale::StoredDocument& document : open)
        states.insert(document.request.id, document.state);
    QStringList ids;
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        const auto state = states.constFind(entry.key());
        const bool isSame = state != states.cend() && *state == entry->state;
        if (entry->registerName == registerName && !isSame)
            ids.append(entry.key());
    }
    return ids;
}

QStringList OpenList::waitedFor() const
{
    QStringList names;
    for (const Entry& entry : m_entries) {
        if (entry.state == DocumentState::Queued && !names.contains(entry.registerName))
            names.append(entry.registerName);
    }
    names.sort();
    return names;
}

int OpenList::count(const QString& registerName, DocumentState state) const
{
    return static_cast<int>(std::count_if(m_entries.cbegin(), m_entries.cend(),
        [&](const Entry& entry) { return entry.state == state && entry.registerName == registerName; }));
}

QDateTime OpenList::oldestQueued(const QString& registerName) const
{
    QDateTime oldest;
    for (const Entry& entry : m_entries) {
        if (entry.state == DocumentState::Queued && entry.registerName == registerName
            && (!oldest.isValid() || entry.queued < oldest))
            oldest = entry.queued;
    }
    return oldest;
}

} // namespace frserver
