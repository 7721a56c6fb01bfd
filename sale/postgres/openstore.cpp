#include "postgres/openstore.h"

#include "postgres/postgresstore.h"
#include "sqlitestore.h"

namespace sale {

bool isShared(const QString& place)
{
    return PostgresPlace::isPlace(place);
}

std::unique_ptr<SqlStore> openStore(const QString& place, int patienceMs)
{
    if (isShared(place))
        return std::make_unique<PostgresStore>(PostgresPlace::of(place), patienceMs);
    return std::make_unique<SqliteStore>(place, patienceMs);
}

std::unique_ptr<SqlConnection> openConnection(const QString& place, int patienceMs)
{
    if (isShared(place))
        return std::make_unique<PostgresConnection>(PostgresPlace::of(place), patienceMs);
    return std::make_unique<SqliteConnection>(place, patienceMs);
}

QString shownPlace(const QString& place)
{
    return isShared(place) ? PostgresPlace::of(place).shown() : place;
}

} // namespace sale
