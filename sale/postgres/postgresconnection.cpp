#include "postgres/postgresconnection.h"

#include "postgres/passwordfile.h"
#include "postgres/postgresfault.h"
#include "postgres/silentservers.h"
#include "saletr.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSysInfo>
#include <QThread>

#include <algorithm>
#include <utility>

namespace sale {

namespace {

const QString driverName = QStringLiteral("QPSQL");

bool isNull(const QVariant& value)
{
    const bool isText = value.metaType() == QMetaType::fromType<QString>();
    return value.isNull() || (isText && value.toString().isNull());
}

/// As the server shows it beside what it is asked, and cuts it off behind 63 characters.
QString nameOfProgram()
{
    return QStringLiteral("frspf %1 %2")
        .arg(QCoreApplication::applicationPid())
        .arg(QSysInfo::machineHostName());
}

QString quotedOption(QString value)
{
    value.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

PostgresConnection::PostgresConnection(const PostgresPlace& place, int patienceMs)
    : m_place(place)
    , m_patienceMs(patienceMs)
{
    if (!QSqlDatabase::isDriverAvailable(driverName))
        throw JournalError(tr("journal %1: Qt has no driver for PostgreSQL here").arg(place.shown()),
            tr("install libqt6sql6-psql"));
    QElapsedTimer since;
    since.start();
    reach(since);
}

QString PostgresConnection::options() const
{
    const QString patience = QString::number(m_patienceMs);
    constexpr int leastSeconds = 2;
    // A server that has vanished is noticed in time, and one that only reads is none to write to.
    QMap<QString, QString> all{
        {QStringLiteral("application_name"), nameOfProgram()},
        {QStringLiteral("connect_timeout"), QString::number(std::max(leastSeconds, m_patienceMs / 1000))},
        {QStringLiteral("tcp_user_timeout"), patience},
        {QStringLiteral("keepalives_idle"), QStringLiteral("5")},
        {QStringLiteral("keepalives_interval"), QStringLiteral("2")},
        {QStringLiteral("keepalives_count"), QStringLiteral("3")},
        {QStringLiteral("target_session_attrs"), QStringLiteral("read-write")},
    };
    all.insert(m_place.parameters);
    if (!m_place.port.isEmpty())
        all.insert(QStringLiteral("port"), m_place.port);
    if (const QString file = passwordFile(m_place); !file.isEmpty())
        all.insert(QStringLiteral("passfile"), file);
    QStringList words;
    for (auto one = all.cbegin(); one != all.cend(); ++one)
        words.append(one.key() + QLatin1Char('=') + quotedOption(one.value()));
    return words.join(QLatin1Char(' '));
}

void PostgresConnection::open() const
{
    QSqlDatabase server = make(driverName);
    server.setHostName(m_place.host);
    server.setDatabaseName(m_place.database);
    server.setUserName(m_place.user);
    server.setPassword(m_place.password);
    server.setConnectOptions(options());
    if (!server.open())
        throwPostgresFault(m_place, server.lastError());
    m_plans.clear();
    arrange();
    if (m_ear)
        subscribe();
}

void PostgresConnection::listen(const QString& channel, const std::function<void(const QString&)>& heard)
{
    m_channel = channel;
    m_heard = heard;
    m_ear = std::make_unique<QObject>();
    if (database().isOpen())
        subscribe();
}

void PostgresConnection::subscribe() const
{
    QSqlDriver* const driver = database().driver();
    if (!driver->subscribeToNotification(m_channel))
        throwPostgresFault(m_place, driver->lastError());
    // Later: whoever hears it may lose the connection, and its driver with it.
    QObject::connect(
        driver, &QSqlDriver::notification, m_ear.get(),
        [heard = m_heard](
            const QString&, QSqlDriver::NotificationSource, const QVariant& text) { heard(text.toString()); },
        Qt::QueuedConnection);
}

void PostgresConnection::arrange() const
{
    constexpr int idleMs = 10'000;
    // A program that is stopped in the middle of a transaction holds up nobody for longer, and a machine that
    // has vanished leaves its connections to others within two minutes.
    const QSqlQuery set = run(QStringLiteral(
        "SELECT current_setting('fsync'), set_config('TimeZone', 'UTC', false), "
        "set_config('tcp_keepalives_idle', '30', false), set_config('tcp_keepalives_interval', '10', false), "
        "set_config('tcp_keepalives_count', '3', false), set_config('tcp_user_timeout', '60000', false), "
        "set_config('search_path', 'frspf', false), set_config('client_min_messages', 'warning', false), "
        // A plan that is kept is kept for all values: it finds the month that it looks at when it runs.
        "set_config('plan_cache_mode', 'force_generic_plan', false), "
        "set_config('lock_timeout', '%1', false), "
        "set_config('idle_in_transaction_session_timeout', '%2', false), "
        "set_config('synchronous_commit', CASE current_setting('synchronous_commit') WHEN 'off' THEN 'on' "
        "ELSE current_setting('synchronous_commit') END, false)")
                                  .arg(m_patienceMs)
                                  .arg(idleMs));
    QSqlQuery row = set;
    if (row.next() && row.value(0).toString() == QStringLiteral("off"))
        throw JournalError(tr("journal %1: the server does not write to its disk").arg(m_place.shown()),
            tr("set fsync = on"));
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

QString PostgresConnection::kept(const QString& statement, const QVariantList& values) const
{
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
    const QString before = std::exchange(m_before, {});
    QSqlQuery query(database());
    if (!query.exec(before + statement) || (!before.isEmpty() && !query.nextResult()))
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
        if (silent.isResting(m_place.shown())) {
            if (waitAgain(since))
                continue;
            throw ConnectionLost(tr("journal %1: the server does not answer").arg(m_place.shown()));
        }
        QElapsedTimer asked;
        asked.start();
        try {
            open();
            m_isGivenUp = false;
        } catch (const ConnectionLost&) {
            close();
            silent.note(m_place.shown(), asked.elapsed());
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
    QSqlQuery query = runPatiently([&] { return whole(statement, values); });
    while (query.next())
        onRow(query);
}

QString PostgresConnection::moment(const QString& column) const
{
    return QStringLiteral("to_char(%1, 'YYYY-MM-DD\"T\"HH24:MI:SS.MS\"Z\"')").arg(column);
}

} // namespace sale
