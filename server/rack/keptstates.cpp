#include "rack/keptstates.h"

#include "postgres/leasedregister.h"
#include "postgres/openstore.h"
#include "postgres/postgresconnection.h"
#include "storedjson.h"

#include <QJsonDocument>

namespace frserver {

KeptStates::KeptStates(const QString& place, int patienceMs)
    : m_connection(sale::openConnection(place, patienceMs))
{
    // frctl, which works with the same file, knows nothing of it and leaves it alone.
    if (!m_connection->isShared())
        m_connection->execute(
            QStringLiteral("CREATE TABLE IF NOT EXISTS frserver_registers "
                           "(register TEXT PRIMARY KEY, kept TEXT NOT NULL) WITHOUT ROWID"));
}

QJsonObject KeptStates::of(const QString& registerName) const
{
    const QVariant kept = m_connection->value(
        QStringLiteral("SELECT kept FROM frserver_registers WHERE register = ?"), {registerName});
    return QJsonDocument::fromJson(kept.toString().toUtf8()).object();
}

void KeptStates::keep(const QString& registerName, const QJsonObject& state, const QJsonObject& lease)
{
    const auto write = [&] {
        m_connection->execute(QStringLiteral("INSERT INTO frserver_registers VALUES (?, ?) "
                                             "ON CONFLICT (register) DO UPDATE SET kept = excluded.kept"),
            {registerName, sale::wholeJson(state)});
    };
    auto* const shared = dynamic_cast<sale::PostgresConnection*>(m_connection.get());
    if (lease.isEmpty() || shared == nullptr)
        return write();
    // A service that was stopped before this goes on behind whoever has the register by then.
    shared->together([&] {
        sale::requireOwner(*shared, sale::LeasedRegister::fromJson(registerName, lease));
        write();
    });
}

void KeptStates::resumeAll()
{
    m_connection->execute(QStringLiteral(
        "UPDATE frserver_registers SET kept = json_remove(kept, '$.pausedBy', '$.pausedSince')"));
}

} // namespace frserver
