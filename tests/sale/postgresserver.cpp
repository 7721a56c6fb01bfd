#include "postgresserver.h"

#include "postgres/postgresconnection.h"
#include "postgres/postgresstore.h"

#include <QDir>

#include <grp.h>
#include <pwd.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <stdexcept>

namespace sale {

namespace {

/// Each test of a service has a server of its own, on a machine that makes others, too.
constexpr int patienceMs = 60'000;

QString program(const QString& name)
{
    const QDir versions("/usr/lib/postgresql");
    const QStringList found = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    if (found.isEmpty())
        throw std::runtime_error("there is no PostgreSQL: install postgresql");
    return versions.filePath(found.constLast() + "/bin/" + name);
}

} // namespace

PostgresServer& PostgresServer::instance()
{
    static PostgresServer server;
    return server;
}

/// It refuses to run as root.
void PostgresServer::asPostgres(QProcess& process) const
{
    const passwd* const user = ::geteuid() == 0 ? ::getpwnam("postgres") : nullptr;
    const uid_t uid = user != nullptr ? user->pw_uid : ::geteuid();
    const gid_t gid = user != nullptr ? user->pw_gid : ::getegid();
    if (user != nullptr && ::chown(m_folder.path().toLocal8Bit(), uid, gid) != 0)
        throw std::runtime_error("no folder for PostgreSQL");
    process.setChildProcessModifier([uid, gid, isOther = user != nullptr] {
        if (isOther && (::setgroups(0, nullptr) != 0 || ::setgid(gid) != 0 || ::setuid(uid) != 0))
            ::_exit(1);
        // Also with a test that is killed.
        ::prctl(PR_SET_PDEATHSIG, SIGQUIT);
    });
    process.setWorkingDirectory(m_folder.path());
    process.setStandardOutputFile(QProcess::nullDevice());
}

PostgresServer::PostgresServer()
{
    QProcess initdb;
    asPostgres(initdb);
    initdb.start(program("initdb"),
        {"-D", m_folder.filePath("data"), "-U", "postgres", "-A", "trust", "-E", "UTF8", "--locale=C.UTF-8",
            "--no-sync"});
    if (!initdb.waitForFinished(patienceMs) || initdb.exitCode() != 0)
        throw std::runtime_error("initdb: " + initdb.readAllStandardError().toStdString());
    asPostgres(m_server);
    m_server.setStandardErrorFile(m_folder.filePath("log"));
    start();
}

PostgresServer::~PostgresServer()
{
    stopAtOnce();
}

void PostgresServer::start()
{
    m_server.start(program("postgres"),
        {"-D", m_folder.filePath("data"), "-k", m_folder.path(), "-c", "listen_addresses=",
            // What is not committed is on no disk.
            "-c", "wal_writer_delay=10s"});
    m_server.waitForStarted();
    // Whoever connects waits until it is there.
    const PostgresConnection connection(place(), patienceMs);
}

void PostgresServer::stopAtOnce()
{
    ::kill(static_cast<pid_t>(m_server.processId()), SIGQUIT);
    m_server.waitForFinished(patienceMs);
}

void PostgresServer::runAlone(const QByteArray& statements)
{
    QProcess alone;
    asPostgres(alone);
    alone.start(program("postgres"), {"--single", "-D", m_folder.filePath("data"), "postgres"});
    alone.write(statements);
    alone.closeWriteChannel();
    if (!alone.waitForFinished(patienceMs) || alone.exitCode() != 0)
        throw std::runtime_error("postgres --single: " + alone.readAllStandardError().toStdString());
}

void PostgresServer::clear()
{
    {
        PostgresConnection connection(place(), patienceMs);
        connection.execute("DROP SCHEMA IF EXISTS frspf CASCADE");
    }
    PostgresStore::migrate(place());
}

} // namespace sale
