#include "postgres/postgresstore.h"

#include "documentarchived.h"
#include "postgres/postgresfault.h"
#include "postgres/postgresschema.h"
#include "postgres/workeddrives.h"
#include "postgres/workertable.h"
#include "registertaken.h"
#include "saletr.h"
#include "storedtime.h"

#include <QSqlQuery>

#include <algorithm>

namespace sale {

namespace {

/// With the month one table is looked at.
SqlKey keyIn(const QString& id, const QString& accepted)
{
    return accepted.isEmpty() ? SqlKey()
                              : SqlKey{{QStringLiteral("id"), QStringLiteral("accepted")}, {id, accepted}};
}

} // namespace

PostgresStore::PostgresStore(const PostgresPlace& place, int patienceMs)
    : SqlStore(m_connection)
    , m_connection(place, patienceMs)
{
    postgresschema::require(m_connection);
}

PostgresStore::~PostgresStore()
{
    m_programRenewal.reset();
    try {
        if (!m_joined.isEmpty())
            WorkerTable(m_connection).remove(m_joined, ProcessIdentity::own());
        if (m_programLease)
            WorkedDrives(m_connection).leaveForProgram(*m_programLease);
    } catch (const JournalError&) {
        // Others see that this process has ended.
    }
}

void PostgresStore::joinWorkers(const QString& registerName)
{
    const QString host
        = m_connection
              .value(
                  QStringLiteral("SELECT host FROM leases WHERE register = ? AND until > clock_timestamp() "
                                 "AND machine <> ?"),
                  {registerName, ProcessIdentity::own().machine})
              .toString();
    if (!host.isEmpty())
        throw RegisterTaken(tr("the register %1 is worked by frserver on %2").arg(registerName, host),
            tr("go through that service, or stop it"));
    if (m_joined == registerName)
        return;
    WorkerTable workers(m_connection);
    // What this one begins is none of those that are known to have ended before. No service may be on this
    // machine to tell those of other machines that they have.
    workers.noteAllEnded();
    workers.add({registerName, {}, 0}, m_doesProgramLineLast);
    m_joined = registerName;
}

void PostgresStore::holdForProgram(const QString& drive)
{
    if (drive.isEmpty() || drive == m_programDrive)
        return;
    WorkedDrives drives(m_connection);
    std::optional<LeasedRegister> lease;
    try {
        lease = drives.holdForProgram(drive, m_programAddress);
    } catch (const RegisterTaken&) {
        drives.noteMet(drive, m_programAddress);
        throw;
    }
    if (m_programLease)
        drives.leaveForProgram(*m_programLease);
    m_programLease = lease;
    m_programDrive = drive;
    m_programRenewal.reset();
    if (lease)
        m_programRenewal.emplace(m_connection.place(), *lease);
}

void PostgresStore::requireFreeLine(const QString& address, bool doesLineLast)
{
    m_doesProgramLineLast = doesLineLast;
    WorkedDrives(m_connection).requireFreeAddress(address);
    m_programAddress = address;
}

void PostgresStore::meetRegister(const QString& registerName, const std::function<QString()>& drive)
{
    if (m_lease)
        return;
    joinWorkers(registerName);
    holdForProgram(drive());
}

void PostgresStore::migrate(const PostgresPlace& place)
{
    PostgresConnection connection(place, usualPatienceMs);
    connection.atLeisure([&connection] { postgresschema::migrate(connection); });
}

/// What is connected tells, and no lease of an older state that was put back.
void PostgresStore::requireNobodyElse(const PostgresPlace& place)
{
    QStringList names;
    PostgresConnection(place, usualPatienceMs)
        .select(QStringLiteral("SELECT DISTINCT application_name FROM pg_stat_activity "
                               "WHERE datname = current_database() AND application_name LIKE 'frspf %' "
                               "AND pid <> pg_backend_pid() ORDER BY 1 LIMIT 5"),
            {}, [&names](const QSqlQuery& row) { names.append(row.value(0).toString()); });
    if (!names.isEmpty())
        throw JournalError(
            tr("journal %1 is in use: %2").arg(place.shown(), names.join(QStringLiteral(", "))),
            tr("end all its services first, on all machines"));
}

void PostgresStore::makeMonths()
{
    const QDate today = timeFromStored(storedNow()).date();
    if (today == m_monthsMade)
        return;
    postgresschema::makeMonths(m_connection, timeFromStored(now()).date());
    m_monthsMade = today;
}

void PostgresStore::inItsMonth(const std::function<void()>& work)
{
    makeMonths();
    try {
        work();
    } catch (const JournalError&) {
        // The server's clock may have been set to another month since.
        m_monthsMade = {};
        throw;
    }
}

StoredDocument PostgresStore::accept(const DocumentRequest& request, const Condition& condition)
{
    StoredDocument document;
    inItsMonth([&] { document = SqlStore::accept(request, condition); });
    noteAcceptance(document);
    return document;
}

std::optional<int> PostgresStore::acceptAndBegin(const DocumentRequest& request, const AttemptStart& start)
{
    if (!m_lease) {
        if (!request.registerName.isEmpty())
            joinWorkers(request.registerName);
        holdForProgram(start.markBefore.value(QStringLiteral("drive")).toString());
    }
    std::optional<int> attempt;
    inItsMonth([&] { attempt = SqlStore::acceptAndBegin(request, start); });
    return attempt;
}

void PostgresStore::requireRoom()
{
    inItsMonth([this] { SqlStore::requireRoom(); });
}

void PostgresStore::backUp(const QString& /*fileName*/)
{
    throw JournalError(
        tr("journal %1 is kept by PostgreSQL").arg(place()), tr("back it up with pg_basebackup, or pg_dump"));
}

QStringList PostgresStore::damages() const
{
    const auto count = [this](const char* statement) {
        return m_connection.value(QString::fromLatin1(statement)).toLongLong();
    };
    QStringList found;
    m_connection.atLeisure([&] {
        if (count("SELECT count(*) FROM documents LEFT JOIN ids USING (id, accepted) WHERE ids.id IS NULL")
            > 0)
            found.append(tr("documents have no id"));
        if (count("SELECT count(*) FROM attempts LEFT JOIN documents USING (id, accepted) "
                  "WHERE documents.id IS NULL")
            > 0)
            found.append(tr("attempts have no document"));
    });
    return found;
}

QString PostgresStore::acceptanceOf(const QString& id) const
{
    if (const QString* const known = m_acceptances.object(id))
        return *known;
    const QString found = m_connection
                              .value(QStringLiteral("SELECT %1 FROM ids WHERE id = ?")
                                         .arg(m_connection.moment(QStringLiteral("accepted"))),
                                  {id})
                              .toString();
    if (!found.isEmpty())
        m_acceptances.insert(id, new QString(found));
    return found;
}

void PostgresStore::noteAcceptance(const StoredDocument& document) const
{
    m_acceptances.insert(document.request.id, new QString(storedTime(document.accepted)));
}

bool PostgresStore::isHolding() const
{
    const qint64 transaction = m_connection.transaction();
    return transaction != 0 && m_held.transaction == transaction;
}

SqlKey PostgresStore::keyOf(const QString& id) const
{
    return keyIn(id, isHolding() && m_held.id == id ? m_held.acceptance : acceptanceOf(id));
}

std::optional<QDateTime> PostgresStore::archived(const QString& id) const
{
    // A server that has taken the place of the one that said so may not have it.
    m_acceptances.remove(id);
    const QDateTime accepted = timeFromStored(acceptanceOf(id));
    return accepted.isValid() && !findId(id) ? std::optional(accepted) : std::nullopt;
}

SqlKey PostgresStore::keyOf(const StoredDocument& document) const
{
    return keyIn(document.request.id, storedTime(document.accepted));
}

std::optional<StoredDocument> PostgresStore::held(const QString& id)
{
    m_held = {id, acceptanceOf(id), {}, m_connection.transaction()};
    return documentAt(keyOf(id), QStringLiteral(" FOR UPDATE"));
}

void PostgresStore::holdReturns(const QString& saleId)
{
    m_connection.value(QStringLiteral("SELECT pg_advisory_xact_lock(1718765415, hashtext(?))"), {saleId});
}

void PostgresStore::requireOwner(const QString& drive)
{
    if (const std::optional<LeasedRegister>& lease = m_lease ? m_lease : m_programLease)
        sale::requireOwner(m_connection, *lease, drive);
}

void PostgresStore::requireLease(const QString& registerName, const QJsonObject& lease)
{
    if (!lease.isEmpty())
        sale::requireOwner(m_connection, LeasedRegister::fromJson(registerName, lease));
}

QString PostgresStore::isOfNoOther() const
{
    return QStringLiteral("NOT EXISTS (SELECT 1 FROM leases WHERE leases.register = documents.register "
                          "AND until > clock_timestamp() AND owner <> ?)");
}

SqlKey PostgresStore::origin() const
{
    return m_lease ? SqlKey{{QStringLiteral("epoch")}, {m_lease->epoch}} : SqlKey();
}

bool PostgresStore::mayBeSent(const StoredDocument& document)
{
    const QList<WorkerTable::Row> others = WorkerTable(m_connection).others(document.request.registerName);
    if (others.isEmpty())
        return false;
    const SqlKey key = keyOf(document);
    const qint64 epoch
        = m_connection
              .value(
                  QStringLiteral("SELECT epoch FROM attempts WHERE %1 AND number = ?").arg(key.condition()),
                  key.values + QVariantList{document.attemptCount})
              .toLongLong();
    return std::any_of(others.cbegin(), others.cend(), [&](const WorkerTable::Row& other) {
        // Whoever had ended before it was begun has sent nothing of it.
        return other.epoch == epoch && (!other.killed.isValid() || document.begun <= other.killed);
    });
}

QDateTime PostgresStore::silentSince(const StoredDocument& document)
{
    return mayBeSent(document) ? QDateTime() : document.settled.addDuration(WorkerTable::longestOnItsWay);
}

DocumentEnding PostgresStore::notIssued(const StoredDocument& known, const DocumentEnding& ending)
{
    if (!mayBeSent(known))
        return ending;
    DocumentEnding unknown;
    unknown.markAfter = ending.markAfter;
    return unknown;
}

RegisterFence PostgresStore::fence()
{
    return {m_connection, m_lease.value()};
}

void PostgresStore::writeId(const QString& id, const QString& digest, const QString& accepted)
{
    // A month whose documents were taken away keeps its ids.
    if (!m_held.acceptance.isEmpty() && m_held.acceptance != accepted)
        throw DocumentArchived(id, timeFromStored(m_held.acceptance));
    const int written = m_connection.execute(
        QStringLiteral("INSERT INTO ids (id, digest, accepted) VALUES (?, ?, ?) ON CONFLICT (id) "
                       "DO UPDATE SET digest = excluded.digest WHERE ids.accepted = excluded.accepted"),
        {id, digest, accepted});
    if (written == 0)
        throw RunAgain(wrongOrder(id, QStringLiteral("was brought in by another program")).fault());
    m_held.acceptance = accepted;
}

void PostgresStore::forget(const QString& id)
{
    SqlStore::forget(id);
    m_connection.execute(QStringLiteral("DELETE FROM ids WHERE id = ?"), {id});
}

QString PostgresStore::goodsJoin() const
{
    return QStringLiteral("goods.id = documents.id AND goods.accepted = documents.accepted");
}

QString PostgresStore::textCondition() const
{
    return QStringLiteral(
        "strpos(lower((documents.id || chr(10) || body) COLLATE \"C\"), lower(? COLLATE \"C\")) > 0");
}

/// At once, and without waiting for the disk: a claim that is forgotten in a power cut is none, and what is
/// begun is written behind it. When the connection is lost it may be done twice: then the register has one
/// more to make.
std::optional<StoredDocument> PostgresStore::claimFirst(const PoolClaim& claim)
{
    const QString pool = claim.pools.size() == 1 ? claim.pools.constFirst() : poolOfFirst(claim);
    const QList<StoredDocument> claimed
        = documents(QStringLiteral("UPDATE documents SET register = ?, claimed = %1 WHERE (accepted, id) = "
                                   "(SELECT accepted, id FROM %2%3) "
                                   "AND set_config('synchronous_commit', 'off', true) = 'off' RETURNING %4")
                        .arg(momentAgo(std::chrono::seconds(0)), firstOf(claim), lockingWords(), columns()),
            QVariantList{claim.registerName} + valuesOfFirst(claim, pool));
    if (claimed.isEmpty())
        return std::nullopt;
    noteAcceptance(claimed.constFirst());
    return claimed.constFirst();
}

QString PostgresStore::lockingWords() const
{
    return QStringLiteral(" FOR UPDATE SKIP LOCKED");
}

QString PostgresStore::now() const
{
    if (!isHolding())
        return m_connection.now();
    // One moment for all that the transaction writes, behind the wait for whoever had the document.
    if (m_held.moment.isEmpty())
        m_held.moment = m_connection.now();
    return m_held.moment;
}

QString PostgresStore::momentAgo(std::chrono::seconds age) const
{
    return QStringLiteral("clock_timestamp() - interval '%1 seconds'").arg(age.count());
}

} // namespace sale
