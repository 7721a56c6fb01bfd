#include "sqlstore.h"

#include "storedjson.h"
#include "storedtime.h"

#include <QSqlQuery>

namespace sale {

namespace {

// In the words of an index each: a long queue is not looked through each second.
const QString overdue = QStringLiteral(
    "SELECT id FROM documents WHERE state = 'queued' AND start_before IS NOT NULL AND start_before < ?");
const QString ofTheFuture = QStringLiteral(
    "SELECT id FROM documents WHERE state = 'queued' AND queued > ? AND (start_before IS NULL) = false");
// Whoever expires them does other things as well.
const QString atOnce = QStringLiteral(" LIMIT 500");

} // namespace

StoredDocument SqlStore::heldExisting(const QString& id)
{
    const std::optional<StoredDocument> known = held(id);
    if (!known)
        throw wrongOrder(id, QStringLiteral("is not there"));
    return *known;
}

StoredDocument SqlStore::ifQueued(const QString& id, const std::function<void(const StoredDocument&)>& work)
{
    m_sql.together([&] {
        const StoredDocument known = heldExisting(id);
        if (known.state == DocumentState::Queued)
            work(known);
    });
    return findId(id).value();
}

void SqlStore::end(const QString& id, StateReason reason, const QString& now)
{
    update(id, QStringLiteral("state = 'notIssued', reason = ?, settled = ?"), {reasonName(reason), now});
}

StoredDocument SqlStore::withdraw(const QString& id)
{
    return ifQueued(id, [&](const StoredDocument&) { end(id, StateReason::Deleted, now()); });
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
        addEnded(known, DocumentState::NotIssued, note);
        end(id, StateReason::Refused, now());
    });
}

void SqlStore::addEnded(const StoredDocument& known, DocumentState verdict, const AttemptNote& note)
{
    const QString& id = known.request.id;
    const int attempt = known.attemptCount + 1;
    const QString moment = now();
    const QString none = QStringLiteral("{}");
    const qint64 sequence = insertInto(QStringLiteral("attempts"), id,
        {QStringLiteral("number"), QStringLiteral("begun"), QStringLiteral("ended"),
            QStringLiteral("mark_before"), QStringLiteral("movement"), QStringLiteral("failure"),
            QStringLiteral("warnings"), QStringLiteral("verdict")},
        {attempt, moment, moment, none, none, storedJson(note.failure), storedJson(note.warnings),
            stateName(verdict)});
    // As an attempt that leaves no trace: no drive has anything to tell of it.
    updateBegun(id, attempt, sequence, QStringLiteral("drive = ''"), {});
}

QStringList SqlStore::expire()
{
    const QString moment = now();
    const QString future = storedTime(timeFromStored(moment).addSecs(mostSecondsBack));
    return changeEach({{overdue + atOnce, {moment}}, {ofTheFuture + atOnce, {future}}},
        [&](const QString& id) { end(id, StateReason::Expired, moment); });
}

QStringList SqlStore::changeEach(const QList<Chosen>& those,
    const std::function<void(const QString& id)>& change, const std::function<void()>& before)
{
    const auto look = [&](const QString& words) {
        QStringList ids;
        for (const Chosen& some : those)
            m_sql.search(some.statement + words, some.values,
                [&ids](const QSqlQuery& row) { ids.append(row.value(0).toString()); });
        ids.removeDuplicates();
        return ids;
    };
    // Mostly there are none, and nobody is to wait for that.
    QStringList ids = look({});
    if (ids.isEmpty())
        return ids;
    m_sql.together([&] {
        if (before)
            before();
        ids = look(lockingWords());
        for (const QString& id : std::as_const(ids))
            change(id);
    });
    return ids;
}

QStringList SqlStore::waitingFor(const QStringList& registers) const
{
    QStringList found;
    if (registers.isEmpty())
        return found;
    const QString places = QStringList(registers.size(), QStringLiteral("(?)")).join(QLatin1Char(','));
    // In the words of the index, register by register: the queues themselves may be long.
    m_sql.search(
        QStringLiteral("SELECT names.column1 FROM (VALUES %1) AS names WHERE "
                       "(SELECT 1 FROM documents WHERE register = names.column1 AND state = 'queued' "
                       "AND state IN ('queued', 'running', 'unknown') LIMIT 1) = 1")
            .arg(places),
        QVariantList(registers.cbegin(), registers.cend()),
        [&found](const QSqlQuery& row) { found.append(row.value(0).toString()); });
    return found;
}

} // namespace sale
