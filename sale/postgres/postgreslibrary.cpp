#include "postgres/postgreslibrary.h"

#include "journalerror.h"
#include "saletr.h"

#include <QDeadlineTimer>
#include <QLibrary>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QVariant>

#include <poll.h>

namespace sale {

namespace {

constexpr int longestRefusalMs = 2'000;
// The library's own numbers.
constexpr int notTried = 3;
constexpr int toBeRead = 1;
constexpr int toBeWritten = 2;
constexpr int verbose = 2;

template <typename Function>
void resolve(QLibrary& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    if (function == nullptr)
        throw JournalError(
            tr("libpq is not there: %1").arg(library.errorString()), tr("install libqt6sql6-psql"));
}

/// A pointer to what only libpq looks into, under whichever name Qt has it.
const void* connectionOf(const QSqlDriver& driver)
{
    const QVariant handle = driver.handle();
    const bool isPointer = handle.metaType().sizeOf() == sizeof(void*);
    return isPointer ? *static_cast<const void* const*>(handle.constData()) : nullptr;
}

} // namespace

const PostgresLibrary& PostgresLibrary::ofProcess()
{
    static const PostgresLibrary library;
    return library;
}

PostgresLibrary::PostgresLibrary()
{
    constexpr int version = 5;
    QLibrary library(QStringLiteral("pq"), version);
    resolve(library, "PQsocket", m_socket);
    resolve(library, "PQping", m_ping);
    resolve(library, "PQconnectStart", m_start);
    resolve(library, "PQconnectPoll", m_poll);
    resolve(library, "PQsetErrorVerbosity", m_setVerbosity);
    resolve(library, "PQerrorMessage", m_errorMessage);
    resolve(library, "PQconnectionNeedsPassword", m_needsPassword);
    resolve(library, "PQfinish", m_finish);
}

int PostgresLibrary::socketOf(const QSqlDriver& driver) const
{
    const void* const connection = connectionOf(driver);
    return connection == nullptr ? -1 : m_socket(connection);
}

QString PostgresLibrary::faultOf(const QString& connection) const
{
    // Where no server can be: then nothing but the options themselves keeps it from trying.
    // untranslated: libpq's
    const QByteArray nowhere = (connection + QStringLiteral(" host=/dev/null hostaddr='' port=''")).toUtf8();
    if (m_ping(nowhere.constData()) != notTried)
        return {};
    void* const attempt = m_start(nowhere.constData());
    const QString text = QString::fromUtf8(m_errorMessage(attempt)).section(QLatin1Char('\n'), 0, 0);
    m_finish(attempt);
    return text;
}

/// Until it stands or has failed.
void PostgresLibrary::follow(void* connection) const
{
    const QDeadlineTimer end(longestRefusalMs);
    int wanted = toBeWritten;
    while ((wanted == toBeRead || wanted == toBeWritten) && !end.hasExpired()) {
        const short what = wanted == toBeRead ? POLLIN : POLLOUT;
        pollfd entry{m_socket(connection), what, 0};
        if (entry.fd < 0)
            break;
        if (::poll(&entry, 1, static_cast<int>(end.remainingTime())) > 0)
            wanted = m_poll(connection);
    }
}

QString PostgresLibrary::refusalOf(const QString& connection) const
{
    void* const attempt = m_start(connection.toUtf8().constData());
    m_setVerbosity(attempt, verbose);
    follow(attempt);
    // What it says at length has the code in front of the words.
    static const QRegularExpression code(QStringLiteral(":  ([0-9A-Z]{5}): "));
    const QRegularExpressionMatch told = code.match(QString::fromUtf8(m_errorMessage(attempt)));
    const bool isPasswordWanted = m_needsPassword(attempt) != 0;
    m_finish(attempt);
    return isPasswordWanted ? QStringLiteral("28P01") : told.captured(1);
}

} // namespace sale
