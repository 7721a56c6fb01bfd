#pragma once

#include "poolclaim.h"
#include "storeddocument.h"

#include <QJsonObject>
#include <QStringList>

#include <chrono>
#include <optional>

namespace sale {

/// Documents that wait for whichever register of a pool is free (DocumentRequest::pool). One that is claimed
/// waits for that register as any other of its documents does, and is begun by nobody else; until it is begun
/// it can be given back, to its place in the order. What was begun stays with its register. All operations
/// throw JournalError.
class DocumentPools
{
public:
    DocumentPools() = default;
    virtual ~DocumentPools() = default;
    DocumentPools(const DocumentPools&) = delete;
    DocumentPools& operator=(const DocumentPools&) = delete;

    /// The first one in the order of acceptance, which is that register's then; of several that claim it one
    /// gets it. Nothing when none waits that it would make.
    virtual std::optional<StoredDocument> claim(const PoolClaim& claim) = 0;
    /// What that register has claimed and not begun waits in its pools again. Gives the ids. With a lease
    /// ("owner" and "epoch", where several may own a register) a JournalError unless it is still the
    /// register's: the next owner has what the former one claimed.
    virtual QStringList giveBack(const QString& registerName, const QJsonObject& lease = {}) = 0;
    /// The same of all that were claimed longer ago than that, by the database's clock, and that nobody is
    /// about to begin: but those that this program is at, and those of registers whose owners are there and
    /// others than that one, which look after them.
    virtual QStringList giveBackStale(
        std::chrono::seconds age, const QStringList& underWay = {}, const QString& owner = {})
        = 0;
    /// A queued document, of whichever register or pool, waits in that pool from now on, in its place in the
    /// order. Gives it as it stands afterwards: its state says whether it came too late.
    virtual StoredDocument moveToPool(const QString& id, const QString& pool) = 0;
};

} // namespace sale
