#include "program/journalcommands.h"

#include "sqlitestore.h"

#include <QFile>

#include <cstdio>

namespace frserver {

namespace {

/// Opening would make one that is not there.
sale::SqliteStore& opened(std::optional<sale::SqliteStore>& store, const QString& journal)
{
    if (!QFile::exists(journal))
        throw sale::JournalError(QStringLiteral("there is no journal %1").arg(journal));
    return store.emplace(journal);
}

} // namespace

int runJournalCommand(const Options& options, const QString& journal)
{
    std::optional<sale::SqliteStore> store;
    const char* what = "a copy is in";
    if (options.command == Options::Command::BackUp) {
        opened(store, journal).backUp(options.name);
    } else if (options.command == Options::Command::Export) {
        opened(store, journal).moveTo(options.name);
        what = "this machine sells no more; frserver import on the other one takes";
    } else {
        sale::SqliteStore::moveIn(options.name, journal);
        what = "this machine goes on with what was in";
    }
    std::fprintf(stderr, "frserver: %s %s\n", what, qPrintable(options.name));
    return 0;
}

} // namespace frserver
