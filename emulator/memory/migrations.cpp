#include "memory/migrations.h"

namespace emulator::migrations {

int newestVersion()
{
    return 1;
}

QStringList tables()
{
    return {QStringLiteral("CREATE TABLE parts (name TEXT PRIMARY KEY, content TEXT NOT NULL)"),
        QStringLiteral("CREATE TABLE documents (number INTEGER PRIMARY KEY, record TEXT NOT NULL, "
                       "entry TEXT NOT NULL, page TEXT NOT NULL)")};
}

QStringList stepTo(int)
{
    return {};
}

} // namespace emulator::migrations
