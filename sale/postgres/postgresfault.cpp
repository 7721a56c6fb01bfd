#include "postgres/postgresfault.h"

#include "postgres/postgresplace.h"
#include "postgres/wrongplace.h"
#include "saletr.h"

#include <QSqlError>

#include <algorithm>

namespace sale {

namespace {

struct Advice
{
    /// How the code of the error begins.
    const char* code;
    const char* text;
};

constexpr Advice advices[] = {
    {"08", QT_TR_NOOP("nothing is sold until the database answers again")},
    {"28", QT_TR_NOOP("the database does not let this user in; a password belongs into .pgpass")},
    {"3D000", QT_TR_NOOP("make the database first, with createdb")},
    {"3F000", QT_TR_NOOP("frserver migrate makes the tables")},
    {"42P01", QT_TR_NOOP("frserver migrate makes the tables")},
    {"42501", QT_TR_NOOP("give this user the right to the tables")},
    {"25006", QT_TR_NOOP("this server only reads; name the one that writes")},
    {"55P03", QT_TR_NOOP("another program has it locked; try again, and end that program if it hangs")},
    {"53100", QT_TR_NOOP("the server's disk is full; nothing is sold until there is room")},
    {"53300", QT_TR_NOOP("the server has no connection left; raise its max_connections")},
};

/// Ended by the server, or not there at all: then there is no code.
bool isLost(const QString& code)
{
    return code.isEmpty() || code.startsWith(QStringLiteral("08")) || code.startsWith(QStringLiteral("57P0"))
        || code == QStringLiteral("25P03") || code == QStringLiteral("53300");
}

QString firstLine(const QSqlError& error)
{
    const QString words = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    return words.section(QLatin1Char('\n'), 0, 0).trimmed();
}

QString adviceFor(const QString& code)
{
    const auto* const advice = std::find_if(std::cbegin(advices), std::cend(advices),
        [&code](const Advice& one) { return code.startsWith(QLatin1String(one.code)); });
    return advice == std::cend(advices) ? QString() : tr(advice->text);
}

} // namespace

void throwSilence(const PostgresPlace& place)
{
    throw ConnectionLost(
        tr("journal %1: the server does not answer").arg(place.shown()), adviceFor(QStringLiteral("08")));
}

void throwTableLock(const PostgresPlace& place, const QString& table, qint64 process)
{
    throw JournalError(tr("journal %1: process %2 of the server keeps the table %3 locked")
                           .arg(place.shown())
                           .arg(process)
                           .arg(table),
        tr("try again, and end that process if it hangs"));
}

bool isLockTimeout(const QSqlError& error)
{
    return error.nativeErrorCode() == QStringLiteral("55P03");
}

void throwPostgresFault(const PostgresPlace& place, const QSqlError& error, const QString& refusal)
{
    const QString code = error.nativeErrorCode().isEmpty() ? refusal : error.nativeErrorCode();
    const QString fault = tr("journal %1: %2").arg(place.shown(), firstLine(error));
    const bool isFull = code == QStringLiteral("53300");
    const QString toDo = adviceFor(isLost(code) && !isFull ? QStringLiteral("08") : code);
    if (isLost(code))
        throw ConnectionLost(fault, toDo);
    // Of two that bring the same id in, one finds it when it looks again.
    const bool isDoubled = code == QStringLiteral("23505");
    if (isDoubled || code.startsWith(QStringLiteral("40")))
        throw RunAgain(fault, toDo);
    if (code.startsWith(QStringLiteral("28")) || code == QStringLiteral("3D000"))
        throw WrongPlace(fault, toDo);
    throw JournalError(fault, toDo);
}

} // namespace sale
