#include "program/journalcommands.h"

#include "rack/keptstates.h"

#include "postgres/openstore.h"
#include "postgres/postgresstore.h"
#include "sqlitestore.h"

#include <QFile>

#include <cstdio>

namespace frserver {

namespace {

using Command = Options::Command;

/// Opening would make one that is not there.
void requireThere(const QString& journal)
{
    if (!QFile::exists(journal))
        throw sale::JournalError(QStringLiteral("there is no journal %1").arg(journal));
}

sale::SqliteStore& opened(std::optional<sale::SqliteStore>& store, const QString& journal)
{
    requireThere(journal);
    return store.emplace(journal);
}

void migrate(const QString& journal)
{
    // A file gets its tables when it is opened, whoever does that.
    if (sale::isShared(journal))
        sale::PostgresStore::migrate(sale::PostgresPlace::of(journal));
    sale::openStore(journal);
    std::fprintf(stderr, "frserver: the tables of %s are those of this release\n",
        qPrintable(sale::shownPlace(journal)));
}

void restored(const QString& journal)
{
    if (sale::isShared(journal))
        sale::PostgresStore::requireNobodyElse(sale::PostgresPlace::of(journal));
    else
        requireThere(journal);
    const QStringList ids = sale::openStore(journal)->doubtUnfinished();
    for (const QString& id : ids)
        std::printf("%s\n", qPrintable(id));
    std::fprintf(stderr, "frserver: documents that a person has to say of what has become of them: %d\n",
        static_cast<int>(ids.size()));
}

void requireFile(const QString& journal)
{
    if (sale::isShared(journal))
        throw sale::JournalError(QStringLiteral("%1 is kept by PostgreSQL").arg(sale::shownPlace(journal)),
            QStringLiteral("back it up with pg_basebackup or pg_dump; other machines use it as it is"));
}

} // namespace

int runJournalCommand(const Options& options, const QString& journal)
{
    if (options.command == Command::Migrate) {
        migrate(journal);
        return 0;
    }
    if (options.command == Command::Restored) {
        restored(journal);
        return 0;
    }
    requireFile(journal);
    std::optional<sale::SqliteStore> store;
    const char* what = "a copy is in";
    if (options.command == Command::BackUp) {
        opened(store, journal).backUp(options.name);
    } else if (options.command == Command::Export) {
        opened(store, journal).moveTo(options.name);
        what = "this machine sells no more; frserver import on the other one takes";
    } else {
        sale::SqliteStore::moveIn(options.name, journal);
        KeptStates(journal, sale::SqlStore::usualPatienceMs).resumeAll();
        what = "this machine goes on with what was in";
    }
    std::fprintf(stderr, "frserver: %s %s\n", what, qPrintable(options.name));
    return 0;
}

} // namespace frserver
