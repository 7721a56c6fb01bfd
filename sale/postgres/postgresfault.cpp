#include "postgres/postgresfault.h"

#include "postgres/postgresplace.h"
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
    {"08", QT_TR_NOOP("nothing is sold until the database answers and lets this user in")},
    {"3F000", QT_TR_NOOP("frserver migrate makes the tables")},
    {"42P01", QT_TR_NOOP("frserver migrate makes the tables")},
    {"42501", QT_TR_NOOP("give this user the right to the tables")},
    {"25006", QT_TR_NOOP("this server only reads; name the one that writes")},
    {"55P03", QT_TR_NOOP("another program has it locked; try again, and end that program if it hangs")},
    {"53100", QT_TR_NOOP("the server's disk is full; nothing is sold until there is room")},
};

/// Ended by the server, not there at all, or it lets nobody in: then there is no code.
bool isLost(const QString& code)
{
    return code.isEmpty() || code.startsWith(QStringLiteral("08")) || code.startsWith(QStringLiteral("57P0"))
        || code == QStringLiteral("25P03");
}

QString firstLine(const QSqlError& error)
{
    const QString words = error.databaseText().isEmpty() ? error.text() : error.databaseText();
    return words.section(QLatin1Char('\n'), 0, 0).trimmed();
}

} // namespace

void throwPostgresFault(const PostgresPlace& place, const QSqlError& error)
{
    const QString code = error.nativeErrorCode();
    const QString fault = tr("journal %1: %2").arg(place.shown(), firstLine(error));
    const QString known = isLost(code) ? QStringLiteral("08") : code;
    const auto* const advice = std::find_if(std::cbegin(advices), std::cend(advices),
        [&known](const Advice& one) { return known.startsWith(QLatin1String(one.code)); });
    const QString toDo = advice == std::cend(advices) ? QString() : tr(advice->text);
    if (isLost(code))
        throw ConnectionLost(fault, toDo);
    // Of two that bring the same id in, one finds it when it looks again.
    const bool isDoubled = code == QStringLiteral("23505");
    if (isDoubled || code.startsWith(QStringLiteral("40")))
        throw RunAgain(fault, toDo);
    throw JournalError(fault, toDo);
}

} // namespace sale
