#include "sqliteconnection.h"

#include "journalfault.h"
#include "preparedstatements.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QThread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace sale {

namespace {

bool isFile(const QString& fileName)
{
    return fileName != QStringLiteral(":memory:");
}

bool isBusy(const QSqlError& error)
{
    // The higher bits say more of it.
    constexpr int kind = 0xff;
    constexpr int busy = 5;
    return (error.nativeErrorCode().toInt() & kind) == busy;
}

/// SQLite alone would make it for its owner to write. The files beside it get the same mode.
void makeFile(const QString& fileName)
{
    constexpr mode_t forGroup = 0660;
    QDir().mkpath(QFileInfo(fileName).absolutePath());
    const int file
        = ::open(QFile::encodeName(fileName).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (file < 0 && errno != EEXIST)
        throw journalFault(fileName, errno);
    if (file < 0) {
        // A single byte is nothing to SQLite, which would write over it.
        if (QFileInfo(fileName).size() == 1)
            throw foreignJournal(fileName);
        return;
    }
    ::fchmod(file, forGroup);
    ::close(file);
}

/// Zeros for one that is not there.
std::pair<quint64, quint64> identityOf(const QString& fileName)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(fileName).constData(), &status) != 0)
        return {};
    return {status.st_dev, status.st_ino};
}

} // namespace

SqliteConnection::SqliteConnection(const QString& fileName, int patienceMs)
    : m_fileName(fileName)
    , m_patienceMs(patienceMs)
    , m_waitingMs(patienceMs)
    , m_statements(std::make_unique<PreparedStatements>())
{
    if (isFile(fileName))
        makeFile(fileName);
    open();
}

SqliteConnection::~SqliteConnection() = default;

void SqliteConnection::open()
{
    QSqlDatabase file = make(QStringLiteral("QSQLITE"));
    file.setDatabaseName(m_fileName);
    file.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(m_patienceMs));
    if (!file.open())
        throw journalFault(m_fileName, file.lastError());
    m_identity = identityOf(m_fileName);
    SqliteConnection::execute(QStringLiteral("PRAGMA synchronous = FULL"));
    // What is anonymised must not stay in pages that are free.
    SqliteConnection::execute(QStringLiteral("PRAGMA secure_delete = ON"));
}

void SqliteConnection::keepLogAhead()
{
    if (!isFile(m_fileName))
        return;
    // Only the first one ever has to change it, and SQLite does not wait for that by itself.
    constexpr unsigned long lookAgainMs = 10;
    QElapsedTimer timer;
    timer.start();
    while (value(QStringLiteral("PRAGMA journal_mode")).toString() != QStringLiteral("wal")) {
        try {
            value(QStringLiteral("PRAGMA journal_mode = WAL"));
        } catch (const JournalError&) {
            if (timer.hasExpired(m_patienceMs))
                throw;
            QThread::msleep(lookAgainMs);
        }
    }
}

/// Who has the file open would write on into one that has lost its name, and all of it would be gone at the
/// end.
void SqliteConnection::requireFile() const
{
    if (isFile(m_fileName) && identityOf(m_fileName) != m_identity)
        throw lostJournal(m_fileName);
}

void SqliteConnection::waitFor(int milliseconds) const
{
    if (milliseconds == m_waitingMs)
        return;
    m_waitingMs = milliseconds;
    QSqlQuery(database()).exec(QStringLiteral("PRAGMA busy_timeout = %1").arg(milliseconds));
}

JournalError SqliteConnection::fault(const QSqlError& error) const
{
    // Whoever has waited in vain does not wait again before that program is done: a service that waited with
    // each question would answer nobody.
    if (isBusy(error))
        waitFor(0);
    // What is read there is written here.
    const bool isOfOther = !m_attached.isEmpty() && !isOfWriting(error);
    return isOfOther ? formerJournalFault(m_attached, error) : journalFault(m_fileName, error);
}

QSqlQuery SqliteConnection::run(const QString& statement, const QVariantList& values) const
{
    QSqlQuery query = m_statements->take(statement, database());
    // What a preparation fails of is forgotten by an execution after it.
    if (query.lastError().isValid())
        throw fault(query.lastError());
    for (const QVariant& value : values)
        query.addBindValue(value);
    if (!query.exec())
        throw fault(query.lastError());
    return query;
}

int SqliteConnection::execute(const QString& statement, const QVariantList& values)
{
    requireFile();
    QSqlQuery query = run(statement, values);
    const int count = query.numRowsAffected();
    m_statements->keep(std::move(query));
    waitFor(m_patienceMs);
    return count;
}

void SqliteConnection::select(const QString& statement, const QVariantList& values,
    const std::function<void(const QSqlQuery&)>& onRow) const
{
    QSqlQuery query = run(statement, values);
    while (query.next())
        onRow(query);
    // A page that is damaged ends the rows as their end does.
    if (query.lastError().isValid())
        throw fault(query.lastError());
    m_statements->keep(std::move(query));
}

void SqliteConnection::begin()
{
    // SQLite itself sleeps for 1, 2, 5 ... 100 ms while another program writes, which takes less than one:
    // where many write, all of them would mostly sleep.
    requireFile();
    constexpr unsigned long shortestUs = 250;
    constexpr unsigned long longestUs = 2'000;
    unsigned long pauseUs = shortestUs;
    // Who was waited for in vain may be done; the moment that other writers take is not his.
    constexpr int momentMs = 50;
    const int patienceMs = std::min(m_patienceMs, std::max(m_waitingMs, momentMs));
    QElapsedTimer timer;
    timer.start();
    waitFor(0);
    QSqlQuery query(database());
    while (!query.exec(QStringLiteral("BEGIN IMMEDIATE"))) {
        const bool isOfOther = isBusy(query.lastError());
        if (!isOfOther)
            waitFor(m_patienceMs);
        if (!isOfOther || timer.hasExpired(patienceMs))
            throw fault(query.lastError());
        QThread::usleep(pauseUs);
        pauseUs = std::min(2 * pauseUs, longestUs);
    }
    // What is done in between may meet others where the file has no log yet.
    waitFor(m_patienceMs);
}

void SqliteConnection::together(const std::function<void()>& statements)
{
    begin();
    try {
        statements();
        execute(QStringLiteral("COMMIT"));
    } catch (...) {
        QSqlQuery(database()).exec(QStringLiteral("ROLLBACK"));
        throw;
    }
}

void SqliteConnection::attach(const QString& fileName, const QString& schema)
{
    QSqlQuery query(database());
    query.prepare(QStringLiteral("ATTACH ? AS %1").arg(schema));
    query.addBindValue(fileName);
    if (!query.exec())
        throw formerJournalFault(fileName, query.lastError());
    m_attached = fileName;
    try {
        requireWhole(fileName, schema);
    } catch (const JournalError&) {
        detach(schema);
        throw;
    }
}

void SqliteConnection::detach(const QString& schema)
{
    execute(QStringLiteral("DETACH %1").arg(schema));
    m_attached.clear();
}

void SqliteConnection::copyTo(const QString& fileName) const
{
    QSqlQuery query(database());
    query.prepare(QStringLiteral("VACUUM INTO ?"));
    query.addBindValue(fileName);
    if (query.exec())
        return;
    throw isOfJournal(query.lastError()) ? journalFault(m_fileName, query.lastError())
                                         : copyFault(fileName, query.lastError());
}

void SqliteConnection::requireWhole(const QString& fileName, const QString& schema)
{
    QSqlQuery query(database());
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("PRAGMA %1.integrity_check(1)").arg(schema)) || !query.next())
        throw formerJournalFault(fileName, query.lastError());
    if (query.value(0).toString() != QStringLiteral("ok"))
        throw formerJournalFault(fileName, query.value(0).toString().section(QLatin1Char('\n'), -1));
}

} // namespace sale
