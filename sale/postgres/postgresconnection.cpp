#include "postgres/postgresconnection.h"

#include "postgres/postgresfault.h"
#include "postgres/postgreslibrary.h"
#include "postgres/silentservers.h"
#include "postgres/tablelocks.h"

#include <QScopeGuard>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QThread>

#include <algorithm>
#include <utility>

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

milliseconds PostgresConnection::longestAnswer(bool isSuspected) const
{
    return isSuspected ? std::min(m_longestAnswer, suspectedAnswer) : m_longestAnswer;
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

QString PostgresConnection::whole(const QString& statement, const QVariantList& values) const
{
    const QStringList parts = statement.split(QLatin1Char('?'));
    Q_ASSERT(parts.size() == values.size() + 1);
    QString text = parts.constFirst();
    for (qsizetype place = 1; place < parts.size(); ++place)
        text += literal(values.at(place - 1)) + parts.at(place);
    return text;
}

void PostgresConnection::requireUnlocked(const QString& statement) const
{
    TableLocks& locks = TableLocks::ofProcess();
    if (!locks.isSuspected(m_server))
        return;
    QSqlQuery lock = run(TableLocks::question());
    bool isAny = false;
    while (lock.next()) {
        isAny = true;
        const QString table = lock.value(0).toString();
        if (TableLocks::isInTheWayOf(statement, table, lock.value(2).toBool()))
            throwTableLock(m_place, table, lock.value(1).toLongLong());
    }
    if (!isAny)
        locks.clear(m_server);
}

QString PostgresConnection::kept(const QString& statement, const QVariantList& values) const
{
    requireUnlocked(statement);
    if (!KeptPlans::isWorthIt(statement, values.size()))
        return whole(statement, values);
    if (m_plans.takeAge())
        run(QStringLiteral("DISCARD PLANS"));
    QString name = m_plans.nameOf(statement);
    if (name.isEmpty()) {
        if (m_plans.isFull()) {
            run(QStringLiteral("DEALLOCATE ALL"));
            m_plans.clear();
        }
        name = m_plans.newName();
        run(KeptPlans::preparation(statement, name));
        m_plans.add(statement, name);
    }
    QStringList literals;
    for (const QVariant& value : values)
        literals.append(literal(value));
    return QStringLiteral("EXECUTE ") + name
        + (literals.isEmpty() ? QString()
                              : QLatin1Char('(') + literals.join(QLatin1Char(',')) + QLatin1Char(')'));
}

QSqlQuery PostgresConnection::run(const QString& statement) const
{
    SilentServers& silent = SilentServers::ofProcess();
    const bool isSuspected = silent.isSuspected(m_server);
    const QString before = std::exchange(m_before, {});
    QSqlQuery query(database());
    const AnswerWatch::Question question(socket(), longestAnswer(isSuspected));
    const bool isDone = query.exec(before + statement) && (before.isEmpty() || query.nextResult());
    if (!isDone && question.isGivenUp()) {
        silent.suspect(m_server);
        m_isGivenUp = m_isGivenUp || isSuspected;
        throwSilence(m_place);
    }
    if (isSuspected)
        silent.clear(m_server);
    if (!isDone) {
        if (isLockTimeout(query.lastError()))
            TableLocks::ofProcess().suspect(m_server);
        throwPostgresFault(m_place, query.lastError());
    }
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

QSqlQuery PostgresConnection::runPatiently(const std::function<QString()>& statement) const
{
    if (m_isInTransaction)
        return run(statement());
    QElapsedTimer since;
    since.start();
    for (;;) {
        reach(since);
        try {
            return run(statement());
        } catch (const ConnectionLost&) {
            close();
            if (!waitAgain(since))
                throw;
        }
    }
}

int PostgresConnection::execute(const QString& statement, const QVariantList& values)
{
    return runPatiently([&] { return kept(statement, values); }).numRowsAffected();
}

void PostgresConnection::select(const QString& statement, const QVariantList& values,
    const std::function<void(const QSqlQuery&)>& onRow) const
{
    QSqlQuery query = runPatiently([&] { return kept(statement, values); });
    while (query.next())
        onRow(query);
}

void PostgresConnection::search(const QString& statement, const QVariantList& values,
    const std::function<void(const QSqlQuery&)>& onRow) const
{
    QSqlQuery query = runPatiently([&] {
        requireUnlocked(statement);
        return whole(statement, values);
    });
    while (query.next())
        onRow(query);
}

QString PostgresConnection::moment(const QString& column) const
{
    return QStringLiteral("to_char(%1, 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')").arg(column);
}

QString PostgresConnection::now() const
{
    return value(QStringLiteral("SELECT ") + moment(QStringLiteral("clock_timestamp()"))).toString();
}

} // namespace sale
