#pragma once

#include "storeddocument.h"

#include <QHash>

#include <map>
#include <set>
#include <tuple>

namespace frserver {

/// The documents that are not done with: how many wait at each place (see Place), and the end of each told
/// and counted once.
class OpenList
{
public:
    /// Place, state and reason.
    using Ending = std::tuple<QString, QString, QString>;

    /// Of documents that are not done with.
    static const QList<sale::DocumentState>& states();

    /// One of an earlier run, which is no news.
    void takeOver(const sale::StoredDocument& document);
    /// Whether that is news.
    bool note(const sale::StoredDocument& document);
    /// Where it is; empty for one that is done with.
    QString placeOf(const QString& id) const { return m_entries.value(id).place; }
    /// @name What of it is no longer so, for whoever looks at all that is open in the journal, piece by piece
    /// @{
    void beginSweep() { ++m_sweep; }
    /// Whether the document is open here just so; it has been seen then.
    bool see(const sale::StoredDocument& document);
    /// Those that were neither seen nor noted since the beginning.
    QStringList unseen() const;
    /// @}
    /// Those of that place that are not open in the journal any more, or not as they are here.
    QStringList outdated(const QString& place, const QList<sale::StoredDocument>& open) const;
    /// Where documents wait, by name.
    QStringList waitedFor() const;
    int count(const QString& place, sale::DocumentState state) const;
    /// Since when the oldest one waits; invalid when none does.
    QDateTime oldestQueued(const QString& place) const;
    /// Endings since the program's start.
    const std::map<Ending, qint64>& endings() const { return m_endings; }

private:
    struct Entry
    {
        sale::DocumentState state = sale::DocumentState::Queued;
        QString place;
        QDateTime queued;
        qint64 seen = 0;
    };
    void add(const QString& id, const Entry& entry);
    void remove(const QString& id);

    QHash<QString, Entry> m_entries;
    /// Many may wait, and somebody asks at each of them.
    std::map<std::pair<QString, sale::DocumentState>, int> m_counts;
    std::map<QString, std::multiset<QDateTime>> m_queued;
    qint64 m_sweep = 0;
    std::map<Ending, qint64> m_endings;
};

} // namespace frserver
