#include "api/owners.h"

#include "postgres/openstore.h"

namespace frserver {

Owners::Owners(const QString& place, int patienceMs)
    : m_connection(sale::openConnection(place, patienceMs))
{
    // frctl, which works with the same file, knows nothing of it and leaves it alone.
    if (!m_connection->isShared())
        m_connection->execute(QStringLiteral(
            "CREATE TABLE IF NOT EXISTS frserver_owners (id TEXT PRIMARY KEY, owner TEXT NOT NULL) WITHOUT ROWID"));
}

void Owners::claim(const QString& id, const QString& owner)
{
    m_connection->execute(QStringLiteral("INSERT INTO frserver_owners VALUES (?, ?) "
                                         "ON CONFLICT (id) DO UPDATE SET owner = excluded.owner"),
        {id, owner});
}

std::optional<QString> Owners::ownerOf(const QString& id) const
{
    const QVariant owner
        = m_connection->value(QStringLiteral("SELECT owner FROM frserver_owners WHERE id = ?"), {id});
    return owner.isValid() ? std::optional(owner.toString()) : std::nullopt;
}

} // namespace frserver
