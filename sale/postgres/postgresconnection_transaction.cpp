// What is done together, and what has become of it when the connection is lost over its end.

#include "postgres/postgresconnection.h"

#include "postgres/postgresfault.h"
#include "saletr.h"

#include <QSqlQuery>
#include <QThread>

#include <utility>

namespace sale {

void PostgresConnection::together(const std::function<void()>& statements)
{
    QElapsedTimer since;
    since.start();
    while (!attempt(statements, since)) { }
}

void PostgresConnection::rollBack()
{
    m_isInTransaction = false;
    // Nothing was said yet.
    if (!std::exchange(m_before, {}).isEmpty())
        return;
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
        m_before = QStringLiteral("BEGIN ISOLATION LEVEL READ COMMITTED; ");
        ++m_transactions;
        m_isInTransaction = true;
        statements();
        ticket = takeTicket();
        run(QStringLiteral("COMMIT"));
        m_isInTransaction = false;
        return true;
    } catch (const ConnectionLost&) {
        m_isInTransaction = false;
        // Another connection may be the one that was lost, before this one was told anything.
        m_before.clear();
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
