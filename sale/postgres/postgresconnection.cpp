#include "postgres/postgresconnection.h"

#include "postgres/postgresfault.h"
#include "postgres/postgreslibrary.h"
#include "postgres/silentservers.h"
#include "saletr.h"

#include <QScopeGuard>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QThread>

#include <algorithm>

namespace sale {

namespace {

using std::chrono::milliseconds;

/// Of a server that has kept another connection of this process waiting.
constexpr milliseconds suspectedAnswer{1'000};
/// Of what goes through all documents, or makes tables of them.
constexpr std::chrono::hours leisure(1);

bool isNull(const QVariant& value)
{
    const bool isText = value.metaType() == QMetaType::fromType<QString>();
    return value.isNull() || (isText && value.toString().isNull());
}

} // namespace

/// Of the connection that there is now.
AnswerWatch::Socket PostgresConnection::socket() const
{
    return [&library = PostgresLibrary::ofProcess(), driver = database().driver()] {
        return library.socketOf(*driver);
    };
}

milliseconds PostgresConnection::longestAnswer() const
{
    return SilentServers::ofProcess().isSuspected(m_server) ? std::min(m_longestAnswer, suspectedAnswer)
                                                            : m_longestAnswer;
}

void PostgresConnection::atLeisure(const std::function<void()>& work) const
{
    const auto former = qScopeGuard([this, usual = m_longestAnswer] { m_longestAnswer = usual; });
    m_longestAnswer = leisure;
    work();
}

QString PostgresConnection::literal(const QVariant& value) const
{
    QSqlField field(QString(), value.metaType());
    if (isNull(value))
        return QStringLiteral("NULL");
    const bool isText = value.metaType() == QMetaType::fromType<QString>();
    // The server keeps no such character, and would take it for the end of the statement.
    field.setValue(isText ? value.toString().replace(QChar::Null, QChar::ReplacementCharacter) : value);
    return database().driver()->formatValue(field);
}

/// Values are no parameters of a prepared statement, so that a pooler may stand in between and a plan knows
/// the months that it need not look at.
QString PostgresConnection::whole(const QString& statement, const QVariantList& values) const
{
    const QStringList parts = statement.split(QLatin1Char('?'));
    Q_ASSERT(parts.size() == values.size() + 1);
    QString text = parts.constFirst();
    for (qsizetype place = 1; place < parts.size(); ++place)
        text += literal(values.at(place - 1)) + parts.at(place);
    return text;
}

QSqlQuery PostgresConnection::run(const QString& statement) const
{
    SilentServers& silent = SilentServers::ofProcess();
    const bool isSuspected = silent.isSuspected(m_server);
    QSqlQuery query(database());
    const AnswerWatch::Question question(socket(), longestAnswer());
    const bool isDone = query.exec(statement);
    if (!isDone && question.isGivenUp()) {
        silent.suspect(m_server);
        m_isGivenUp = m_isGivenUp || isSuspected;
        throwSilence(m_place);
    }
    if (isSuspected)
        silent.clear(m_server);
    if (!isDone)
        throwPostgresFault(m_place, query.lastError());
    return query;
}

bool PostgresConnection::waitAgain(const QElapsedTimer& since) const
{
    constexpr unsigned long pauseMs = 50;
    if (m_isGivenUp || since.hasExpired(m_patienceMs)) {
        m_isGivenUp = true;
        return false;
    }
    QThread::msleep(pauseMs);
    return true;
}

void PostgresConnection::reach(const QElapsedTimer& since) const
{
    SilentServers& silent = SilentServers::ofProcess();
    while (!database().isOpen()) {
        if (const qint64 rest = silent.restOf(m_server); rest > 0) {
            // Nobody waits for what does not come in time.
            if (rest > m_patienceMs - since.elapsed() || !waitAgain(since))
                throwSilence(m_place);
            continue;
        }
        QElapsedTimer asked;
        asked.start();
        try {
            open();
            silent.clear(m_server);
            m_isGivenUp = false;
        } catch (const ConnectionLost&) {
            close();
            silent.note(m_server, asked.elapsed());
            if (!waitAgain(since))
                throw;
        } catch (const JournalError&) {
            close();
            throw;
        }
    }
}

QSqlQuery PostgresConnection::runPatiently(const QString& statement, const QVariantList& values) const
{
    if (m_isInTransaction)
        return run(whole(statement, values));
    QElapsedTimer since;
    since.start();
    for (;;) {
        reach(since);
        try {
            return run(whole(statement, values));
        } catch (const ConnectionLost&) {
            close();
            if (!waitAgain(since))
                throw;
        }
    }
}

int PostgresConnection::execute(const QString& statement, const QVariantList& values)
{
    return runPatiently(statement, values).numRowsAffected();
}

void PostgresConnection::select(const QString& statement, const QVariantList& values,
    const std::function<void(const QSqlQuery&)>& onRow) const
{
    QSqlQuery query = runPatiently(statement, values);
    while (query.next())
        onRow(query);
}

void PostgresConnection::together(const std::function<void()>& statements)
{
    QElapsedTimer since;
    since.start();
    while (!attempt(statements, since)) { }
}

QString PostgresConnection::moment(const QString& column) const
{
    return QStringLiteral("to_char(%1, 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')").arg(column);
}

QString PostgresConnection::now() const
{
    return value(QStringLiteral("SELECT ") + moment(QStringLiteral("clock_timestamp()"))).toString();
}

void PostgresConnection::rollBack()
{
    m_isInTransaction = false;
    try {
        run(QStringLiteral("ROLLBACK"));
    } catch (const JournalError&) {
        // Whoever asks next finds out.
    }
}

bool PostgresConnection::attempt(const std::function<void()>& statements, const QElapsedTimer& since)
{
    Ticket ticket;
    reach(since);
    try {
        run(QStringLiteral("BEGIN ISOLATION LEVEL READ COMMITTED"));
        ++m_transactions;
        m_isInTransaction = true;
        statements();
        ticket = takeTicket();
        run(QStringLiteral("COMMIT"));
        m_isInTransaction = false;
        return true;
    } catch (const ConnectionLost&) {
        m_isInTransaction = false;
        close();
        if (!waitAgain(since))
            throw;
        return !ticket.transaction.isEmpty() && isCommitted(ticket, since);
    } catch (const RunAgain&) {
        rollBack();
        if (since.hasExpired(m_patienceMs))
            throw;
        QThread::msleep(1);
        return false;
    } catch (...) {
        rollBack();
        throw;
    }
}

PostgresConnection::Ticket PostgresConnection::readTicket() const
{
    Ticket ticket;
    select(
        QStringLiteral("SELECT pg_current_xact_id_if_assigned()::text, (SELECT id FROM server_life)::text"),
        {}, [&ticket](const QSqlQuery& row) {
            ticket = {row.value(0).toString(), row.value(1).toString()};
        });
    return ticket;
}

PostgresConnection::Ticket PostgresConnection::takeTicket()
{
    Ticket ticket = readTicket();
    if (!ticket.transaction.isEmpty() && ticket.life.isEmpty()) {
        // The first one behind such a start.
        run(QStringLiteral("INSERT INTO server_life DEFAULT VALUES ON CONFLICT DO NOTHING"));
        ticket = readTicket();
    }
    return ticket;
}

bool PostgresConnection::isCommitted(const Ticket& ticket, const QElapsedTimer& since) const
{
    const QString unclear = QStringLiteral("unclear");
    for (;;) {
        reach(since);
        // Numbers that were not on the server's disk when it died, or not on that of the server that has
        // taken its place, are given again: "committed" may be said of another one's then.
        const QString status = value(
            QStringLiteral(
                "SELECT CASE WHEN (SELECT id FROM server_life)::text = ? "
                "THEN pg_xact_status(?::xid8) WHEN ?::xid8 >= pg_snapshot_xmax(pg_current_snapshot()) "
                "OR pg_xact_status(?::xid8) IN ('aborted', 'in progress') THEN 'aborted' ELSE ? END"),
            {ticket.life, ticket.transaction, ticket.transaction, ticket.transaction, unclear})
                                   .toString();
        if (status == QStringLiteral("committed"))
            return true;
        if (status == QStringLiteral("aborted"))
            return false;
        // The server may still be at it.
        if (status == unclear || !waitAgain(since))
            throw JournalError(tr("journal %1: the server does not tell whether it has written what it was "
                                  "told last")
                                   .arg(m_place.shown()));
    }
}

} // namespace sale
