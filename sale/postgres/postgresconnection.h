#pragma once

#include "postgres/answerwatch.h"
#include "postgres/keptplans.h"
#include "postgres/postgresplace.h"
#include "sqlconnection.h"

#include <QElapsedTimer>
#include <QObject>

#include <chrono>
#include <memory>

class QSqlQuery;

namespace sale {

/// A PostgreSQL database that several machines write, each time to the server's disk. A connection that is
/// lost is made anew, and what it was doing is done again when it is sure that it was not done: the server
/// is asked what has become of the transaction whose end it did not tell. It stays open what became of that
/// one when the server is not back within the patience, or has started anew in between and may have given
/// its number to another one. A server that does not answer in time is taken for a lost connection. Nobody
/// waits for a table that another one of this process has waited for in vain.
class PostgresConnection : public SqlConnection
{
public:
    PostgresConnection(const PostgresPlace& place, int patienceMs);

    const PostgresPlace& place() const { return m_place; }
    /// That one under way, which is no other one's number as long as this is there; 0 for none.
    qint64 transaction() const { return m_isInTransaction ? m_transactions : 0; }

    /// Outside of a transaction it may be done twice.
    int execute(const QString& statement, const QVariantList& values = {}) override;
    void select(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const override;
    void search(const QString& statement, const QVariantList& values,
        const std::function<void(const QSqlQuery&)>& onRow) const override;
    void together(const std::function<void()>& statements) override;
    QString moment(const QString& column) const override;
    bool isShared() const override { return true; }
    /// The server's clock, in the form of storedTime.
    QString now() const;
    void atLeisure(const std::function<void()>& work) const override;

    /// In which a question is to be answered; at first somewhat more than the patience, with which the server
    /// itself gives up waiting for others, and never less than leastAnswer.
    void setLongestAnswer(std::chrono::milliseconds longest) { m_longestAnswer = longest; }
    /// An owner of registers has to know in time that its lease cannot be renewed: of 15 s that is at 7 s
    /// behind a renewal that was due.
    static constexpr std::chrono::milliseconds leastAnswer{3'000};

    /// What is said on the channel (NOTIFY) is given to the function by the event loop of this thread. What
    /// is said between a loss of the connection and its next use is missed.
    void listen(const QString& channel, const std::function<void(const QString& text)>& heard);

private:
    void open() const;
    void subscribe() const;
    void arrange() const;
    QString options() const;
    /// All that libpq is told.
    QString connectionString() const;
    QString refusal() const;
    void requireSoundOptions() const;
    QString literal(const QVariant& value) const;
    /// The statement with its values in their places.
    QString whole(const QString& statement, const QVariantList& values) const;
    AnswerWatch::Socket socket() const;
    int connectSeconds() const;
    std::chrono::milliseconds longestOpening() const;
    std::chrono::milliseconds longestAnswer(bool isSuspected) const;
    /// Throws JournalError where a table of the statement is known to be locked.
    void requireUnlocked(const QString& statement) const;
    /// The same by the plan that the server keeps of it, where that is worth it.
    QString kept(const QString& statement, const QVariantList& values) const;
    QSqlQuery run(const QString& statement) const;
    /// The statement is made once the connection is there.
    QSqlQuery runPatiently(const std::function<QString()>& statement) const;
    /// The connection is there afterwards.
    void reach(const QElapsedTimer& since) const;
    /// Waits a moment before the next attempt; false when the patience is over.
    bool waitAgain(const QElapsedTimer& since) const;
    /// Whether the work and its end came through; otherwise it is to be done again.
    bool attempt(const std::function<void()>& statements, const QElapsedTimer& since);
    /// By what the server is asked later about the transaction under way.
    struct Ticket
    {
        /// Empty for one that has written nothing.
        QString transaction = {};
        /// Of the server's table: another one, or none, when it has started anew without a good-bye.
        QString life = {};
    };
    Ticket readTicket() const;
    Ticket takeTicket();
    bool isCommitted(const Ticket& ticket, const QElapsedTimer& since) const;
    void rollBack();

    const PostgresPlace m_place;
    const QString m_server;
    const int m_patienceMs;
    mutable std::chrono::milliseconds m_longestAnswer;
    bool m_isInTransaction = false;
    /// What is said with the next statement: each that is said alone is waited for.
    mutable QString m_before;
    qint64 m_transactions = 0;
    /// Nobody is kept waiting for it again and again.
    mutable bool m_isGivenUp = false;
    mutable KeptPlans m_plans;
    QString m_channel;
    std::function<void(const QString& text)> m_heard;
    /// What hears it, and hears nothing more when this is gone.
    std::unique_ptr<QObject> m_ear;
};

} // namespace sale
