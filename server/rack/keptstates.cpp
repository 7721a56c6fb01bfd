#include "rack/keptstates.h"

#include "journalerror.h"
#include "postgres/openstore.h"
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
    const QString begin = QStringLiteral("INSERT INTO frserver_registers ");
    const QString end = QStringLiteral(" ON CONFLICT (register) DO UPDATE SET kept = excluded.kept");
    const QString kept = sale::wholeJson(state);
    if (lease.isEmpty() || !m_connection->isShared()) {
        m_connection->execute(begin + QStringLiteral("VALUES (?, ?)") + end, {registerName, kept});
        return;
    }
    // A service that was stopped before this goes on behind whoever has the register by then.
    const QString ifOwner = QStringLiteral(
        "SELECT register, ? FROM leases WHERE register = ? AND owner = ? AND epoch = ? FOR KEY SHARE");
    const int written = m_connection->execute(begin + ifOwner + end,
        {kept, registerName, lease.value(QStringLiteral("owner")).toString(),
            lease.value(QStringLiteral("epoch")).toInteger()});
    if (written == 0)
        throw sale::JournalError(
            QStringLiteral("the register %1 has another owner by now").arg(registerName));
}

void KeptStates::resumeAll()
{
    m_connection->execute(QStringLiteral(
        "UPDATE frserver_registers SET kept = json_remove(kept, '$.pausedBy', '$.pausedSince')"));
}

} // namespace frserver
