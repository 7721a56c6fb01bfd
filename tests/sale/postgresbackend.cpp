#include "clockedstore.h"
#include "postgresserver.h"
#include "storefixture.h"

namespace sale {

QList<BackEnd> backEnds()
{
    return {{"Postgres", [](const QTemporaryDir& folder) {
                 static QString cleared;
                 PostgresServer& server = PostgresServer::instance();
                 // Once a test, which has a folder of its own; its threads come after itself.
                 if (cleared != folder.path())
                     server.clear();
                 cleared = folder.path();
                 return std::unique_ptr<DocumentStore>(std::make_unique<ClockedStore>(server.place()));
             }}};
}

} // namespace sale
