#include "sqlstore.h"

#include <utility>

namespace sale {

QStringList SqlStore::doubtUnfinished()
{
    QStringList ids;
    QList<StoredDocument> unfinished;
    m_sql.atLeisure([&] {
        unfinished
            = find({.states = {DocumentState::Queued, DocumentState::Running, DocumentState::Unknown}});
    });
    // One by one, as whoever keeps them holds each that is changed: run again, it goes on where it ended.
    for (const StoredDocument& found : std::as_const(unfinished)) {
        const QString& id = found.request.id;
        if (found.state != DocumentState::Queued && !found.isToBeAsked())
            continue;
        m_sql.together([&] {
            const StoredDocument known = heldExisting(id);
            if (known.state == found.state)
                doubt(known);
        });
        ids.append(id);
    }
    return ids;
}

void SqlStore::doubt(const StoredDocument& known)
{
    const QString& id = known.request.id;
    const QString moment = now();
    const QString unknown = stateName(DocumentState::Unknown);
    if (known.state == DocumentState::Queued)
        addEnded(known, DocumentState::Unknown);
    else
        updateAttempt(id, known.attemptCount, QStringLiteral("ended = ?, verdict = ?"), {moment, unknown});
    // Without a drive: its counters tell of later documents, too, that are forgotten here, and one of the
    // same sums would be taken for this one.
    update(id, QStringLiteral("state = ?, drive = '', settled = ?"), {unknown, moment});
}

} // namespace sale
