// How it is made, and what it is told at first.

#include "postgres/postgresconnection.h"

#include "postgres/passwordfile.h"
#include "postgres/postgresfault.h"
#include "postgres/postgreslibrary.h"
#include "postgres/silentservers.h"
#include "postgres/wrongplace.h"
#include "saletr.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSysInfo>

#include <algorithm>
#include <utility>

namespace sale {

namespace {

using std::chrono::milliseconds;

const QString driverName = QStringLiteral("QPSQL");
/// Above that with which the server gives up waiting for others, and says so.
constexpr milliseconds answerMargin{1'000};
/// libpq takes no less.
constexpr int leastSeconds = 2;
/// Of a server that lets nobody in, and does not keep them waiting.
constexpr int longMs = 1'500;
const QString connectTimeout = QStringLiteral("connect_timeout");

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
    , m_server(place.shown())
    , m_patienceMs(patienceMs)
    , m_longestAnswer(std::max(leastAnswer, milliseconds(patienceMs) + answerMargin))
{
    if (!QSqlDatabase::isDriverAvailable(driverName))
        throw JournalError(tr("journal %1: Qt has no driver for PostgreSQL here").arg(place.shown()),
            tr("install libqt6sql6-psql"));
    requireSoundOptions();
    QElapsedTimer since;
    since.start();
    reach(since);
}

QString PostgresConnection::options() const
{
    const QString patience = QString::number(m_patienceMs);
    // A server that has vanished is noticed in time, and one that only reads is none to write to.
    QMap<QString, QString> all{
        {QStringLiteral("tcp_user_timeout"), patience},
        {QStringLiteral("keepalives_idle"), QStringLiteral("5")},
        {QStringLiteral("keepalives_interval"), QStringLiteral("2")},
        {QStringLiteral("keepalives_count"), QStringLiteral("3")},
        {QStringLiteral("target_session_attrs"), QStringLiteral("read-write")},
    };
    all.insert(m_place.parameters);
    // Meant, whatever the address says: services are looked for by the one
    // (PostgresStore::requireNobodyElse), and nobody waits for longer.
    all.insert(QStringLiteral("application_name"), nameOfProgram());
    all.insert(connectTimeout, QString::number(connectSeconds()));
    if (!m_place.port.isEmpty())
        all.insert(QStringLiteral("port"), m_place.port);
    if (const QString file = passwordFile(m_place); !file.isEmpty())
        all.insert(QStringLiteral("passfile"), file);
    QStringList words;
    for (auto one = all.cbegin(); one != all.cend(); ++one)
        words.append(one.key() + QLatin1Char('=') + quotedOption(one.value()));
    return words.join(QLatin1Char(' '));
}

QString PostgresConnection::connectionString() const
{
    const std::pair<QString, QString> parts[]
        = {{QStringLiteral("host"), m_place.host}, {QStringLiteral("dbname"), m_place.database},
            {QStringLiteral("user"), m_place.user}, {QStringLiteral("password"), m_place.password}};
    QString all = options();
    for (const auto& [name, value] : parts) {
        if (!value.isEmpty())
            all += QLatin1Char(' ') + name + QLatin1Char('=') + quotedOption(value);
    }
    return all;
}

/// Whose reason libpq does not tell by its code.
QString PostgresConnection::refusal() const
{
    return PostgresLibrary::ofProcess().refusalOf(connectionString());
}

void PostgresConnection::requireSoundOptions() const
{
    const QString fault = PostgresLibrary::ofProcess().faultOf(connectionString());
    if (!fault.isEmpty())
        throw WrongPlace(
            tr("journal %1: %2").arg(m_server, fault), tr("change what stands behind the question mark"));
}

int PostgresConnection::connectSeconds() const
{
    const int usual = std::max(leastSeconds, m_patienceMs / 1000);
    const int asked = m_place.parameters.value(connectTimeout).toInt();
    return asked > 0 ? std::min(asked, usual) : usual;
}

/// Of one host after the other, and what Qt's driver asks then.
milliseconds PostgresConnection::longestOpening() const
{
    const qsizetype hosts = m_place.host.count(QLatin1Char(',')) + 1;
    return std::chrono::seconds(connectSeconds()) * hosts + m_longestAnswer;
}

void PostgresConnection::open() const
{
    QSqlDatabase server = make(driverName);
    server.setHostName(m_place.host);
    server.setDatabaseName(m_place.database);
    server.setUserName(m_place.user);
    server.setPassword(m_place.password);
    server.setConnectOptions(options());
    {
        QElapsedTimer asked;
        asked.start();
        const AnswerWatch::Question opening(socket(), longestOpening());
        if (!server.open())
            throwPostgresFault(m_place, server.lastError(), asked.elapsed() < longMs ? refusal() : QString());
    }
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
    const bool isSuspected = SilentServers::ofProcess().isSuspected(m_server);
    const AnswerWatch::Question question(socket(), longestAnswer(isSuspected));
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

} // namespace sale
