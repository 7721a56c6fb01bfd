#include "sqlstore.h"

#include "storedjson.h"
#include "storedtime.h"

#include <QSqlQuery>

namespace sale {

namespace {

// In the words of the indices of what may expire: a long queue is not looked through each second.
const QString overdue = QStringLiteral("FROM documents WHERE state = 'queued' AND start_before IS NOT NULL "
                                       "AND (start_before < ? OR queued > ?)");

} // namespace

StoredDocument SqlStore::existing(const QString& id) const
{
    const std::optional<StoredDocument> known = findId(id);
    if (!known)
        throw wrongOrder(id, QStringLiteral("is not there"));
    return *known;
}

StoredDocument SqlStore::ifQueued(const QString& id, const std::function<void(const StoredDocument&)>& work)
{
    m_sql.together([&] {
        hold(id);
        const StoredDocument known = existing(id);
        if (known.state == DocumentState::Queued)
            work(known);
    });
    return existing(id);
}

void SqlStore::end(const QString& id, StateReason reason)
{
    update(id, QStringLiteral("state = 'notIssued', reason = ?, settled = ?"),
        {reasonName(reason), storedNow()});
}

StoredDocument SqlStore::withdraw(const QString& id)
{
    return ifQueued(id, [&](const StoredDocument&) { end(id, StateReason::Deleted); });
}

StoredDocument SqlStore::move(const QString& id, const QString& registerName)
{
    return ifQueued(id, [&](const StoredDocument&) {
        update(id, QStringLiteral("register = ?, pool = '', claimed = NULL"), {registerName});
    });
}

StoredDocument SqlStore::refuse(const QString& id, const AttemptNote& note)
{
    return ifQueued(id, [&](const StoredDocument& known) {
        const int attempt = known.attemptCount + 1;
        const QString now = storedNow();
        const QString none = QStringLiteral("{}");
        insertInto(QStringLiteral("attempts"), id,
            {QStringLiteral("number"), QStringLiteral("begun"), QStringLiteral("ended"),
                QStringLiteral("mark_before"), QStringLiteral("movement"), QStringLiteral("failure"),
                QStringLiteral("warnings"), QStringLiteral("verdict")},
            {attempt, now, now, none, none, storedJson(note.failure), storedJson(note.warnings),
                stateName(DocumentState::NotIssued)});
        // As an attempt that leaves no trace: no drive has anything to tell of it.
        updateBegun(id, attempt, QStringLiteral("drive = ''"), {});
        end(id, StateReason::Refused);
    });
}

QStringList SqlStore::expire(const QDateTime& now)
{
    QStringList ids;
    const auto look = [&](const QString& words) {
        ids.clear();
        m_sql.select(QStringLiteral("SELECT id ") + overdue + words,
            {storedTime(now), storedTime(now.addSecs(mostSecondsBack))},
            [&ids](const QSqlQuery& row) { ids.append(row.value(0).toString()); });
    };
    // Mostly there are none, and nobody is to wait for that.
    look({});
    if (ids.isEmpty())
        return ids;
    m_sql.together([&] {
        look(lockingWords());
        for (const QString& id : std::as_const(ids))
            end(id, StateReason::Expired);
    });
    return ids;
}

} // namespace sale
