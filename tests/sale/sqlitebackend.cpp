#include "sqlitestore.h"
#include "storefixture.h"

namespace sale {

QList<BackEnd> backEnds()
{
    return {{"Sqlite", [](const QTemporaryDir& folder) {
                 return std::unique_ptr<DocumentStore>(
                     std::make_unique<SqliteStore>(folder.filePath("data/sales.sqlite")));
             }}};
}

} // namespace sale
