#pragma once

#include "storeddocument.h"

#include <QHash>

#include <map>
#include <tuple>

namespace frserver {

/// The documents that are not done with: how many wait, and the end of each told and counted once.
class OpenList
{
public:
    /// Register, state and reason.
    using Ending = std::tuple<QString, QString, QString>;

    /// One of an earlier run, which is no news.
    void takeOver(const sale::StoredDocument& document);
    /// Whether that is news.
    bool note(const sale::StoredDocument& document);
    /// Whose document it is; empty for one that is done with.
    QString registerOf(const QString& id) const { return m_entries.value(id).registerName; }
    /// Those of the register that are not open in the journal any more, or not as they are here.
    QStringList outdated(const QString& registerName, const QList<sale::StoredDocument>& open) const;
    /// That documents wait for, by name.
    QStringList waitedFor() const;
    int count(const QString& registerName, sale::DocumentState state) const;
    /// Since when the oldest one waits; invalid when none does.
    QDateTime oldestQueued(const QString& registerName) const;
    /// Endings since the program's start.
    const std::map<Ending, qint64>& endings() const { return m_endings; }

private:
    struct Entry
    {
        sale::DocumentState state = sale::DocumentState::Queued;
        QString registerName;
        QDateTime queued;
    };
    QHash<QString, Entry> m_entries;
    std::map<Ending, qint64> m_endings;
};

} // namespace frserver
