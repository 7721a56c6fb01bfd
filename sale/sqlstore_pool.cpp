// Documents that wait for any register of a pool.

#include "sqlstore.h"
#include "storedtime.h"

#include <QSqlQuery>

#include <limits>

namespace sale {

namespace {

// In the words of their indices.
const QString isUnclaimed = QStringLiteral("state = 'queued' AND register = ''");
// That of those indices alone: along the other ones a planner would pass by all that was done before.
const QString inOrder = QStringLiteral("sequence + 0");
const QString isClaimed = QStringLiteral("state = 'queued' AND register <> '' AND pool <> ''");
const QString claimedOnes = QStringLiteral("SELECT id FROM documents WHERE %1 AND %2");
const QString unclaiming = QStringLiteral("register = '', claimed = NULL");

QString fitting(const PoolClaim& claim)
{
    const QString words = isUnclaimed + QStringLiteral(" AND pool = ?");
    return claim.isPaperless ? words + QStringLiteral(" AND paperless") : words;
}

QString withoutThose(const QStringList& ids)
{
    const QStringList places(ids.size(), QStringLiteral("?"));
    return places.isEmpty() ? QString()
                            : QStringLiteral(" AND id NOT IN (%1)").arg(places.join(QLatin1Char(',')));
}

} // namespace

std::optional<StoredDocument> SqlStore::claim(const PoolClaim& claim)
{
    if (claim.id.isEmpty())
        return claimFirst(claim);
    std::optional<StoredDocument> document;
    m_sql.together([&] { document = taken(claim, unclaimed(claim)); });
    return document;
}

std::optional<StoredDocument> SqlStore::claimFirst(const PoolClaim& claim)
{
    std::optional<StoredDocument> document;
    // Mostly there is none, and nobody is to wait for that.
    const QString pool = poolOfFirst(claim);
    if (pool.isEmpty())
        return document;
    m_sql.together([&] {
        const QList<StoredDocument> found
            = documents(QStringLiteral("SELECT %1 FROM ").arg(columns()) + firstOf(claim) + lockingWords(),
                valuesOfFirst(claim, pool));
        document = taken(claim, found.isEmpty() ? std::nullopt : std::optional(found.constFirst()));
    });
    return document;
}

std::optional<StoredDocument> SqlStore::taken(
    const PoolClaim& claim, const std::optional<StoredDocument>& document)
{
    if (!document)
        return document;
    const SqlKey key = keyOf(*document);
    m_sql.execute(QStringLiteral("UPDATE documents SET register = ?, claimed = %1 WHERE %2")
                      .arg(momentAgo(std::chrono::seconds(0)), key.condition()),
        QVariantList{claim.registerName} + key.values);
    StoredDocument made = *document;
    made.request.registerName = claim.registerName;
    return made;
}

QString SqlStore::firstOf(const PoolClaim& claim)
{
    return QStringLiteral("documents WHERE %1%2 ORDER BY %3 LIMIT 1")
        .arg(fitting(claim), withoutThose(claim.except), inOrder);
}

QVariantList SqlStore::valuesOfFirst(const PoolClaim& claim, const QString& pool)
{
    QVariantList values{pool};
    for (const QString& id : claim.except)
        values.append(id);
    return values;
}

/// Each pool has its documents in their order.
QString SqlStore::poolOfFirst(const PoolClaim& claim) const
{
    QString first;
    qint64 place = std::numeric_limits<qint64>::max();
    for (const QString& pool : claim.pools) {
        const QVariant found = m_sql.value(
            QStringLiteral("SELECT sequence FROM ") + firstOf(claim), valuesOfFirst(claim, pool));
        if (found.isValid() && found.toLongLong() < place) {
            place = found.toLongLong();
            first = pool;
        }
    }
    return first;
}

std::optional<StoredDocument> SqlStore::unclaimed(const PoolClaim& claim)
{
    const std::optional<StoredDocument> found = held(claim.id);
    const bool fits = found && found->state == DocumentState::Queued && found->request.registerName.isEmpty()
        && claim.pools.contains(found->request.pool) && (found->request.isPaperless || !claim.isPaperless);
    return fits ? found : std::nullopt;
}

QStringList SqlStore::giveBack(const QString& registerName, const QJsonObject& lease)
{
    return giveBackThose(
        QStringLiteral("register = ?"), {registerName}, [&] { requireLease(registerName, lease); });
}

QStringList SqlStore::giveBackStale(
    std::chrono::seconds age, const QStringList& underWay, const QString& owner)
{
    // A clock that was put back makes none wait for it.
    QString condition = QStringLiteral("(claimed < %1 OR claimed > %2)")
                            .arg(momentAgo(age), momentAgo(-std::chrono::seconds(mostSecondsBack)));
    QVariantList values;
    if (const QString alone = isOfNoOther(); !alone.isEmpty()) {
        condition += QStringLiteral(" AND ") + alone;
        values.append(owner);
    }
    // Few are under way for so long, and the question would be dearer by each that is.
    const auto isUnderWay = [&underWay](const QString& id) { return underWay.contains(id); };
    QStringList ids = changeEach({{claimedOnes.arg(isClaimed, condition), values}}, [&](const QString& id) {
        if (!isUnderWay(id))
            update(id, unclaiming, {});
    });
    ids.removeIf(isUnderWay);
    return ids;
}

QStringList SqlStore::giveBackThose(
    const QString& condition, const QVariantList& values, const std::function<void()>& before)
{
    return changeEach(
        {{claimedOnes.arg(isClaimed, condition), values}},
        [this](const QString& id) { update(id, unclaiming, {}); }, before);
}

StoredDocument SqlStore::moveToPool(const QString& id, const QString& pool)
{
    return ifQueued(id, [&](const StoredDocument&) {
        update(id, QStringLiteral("register = '', pool = ?, claimed = NULL"), {pool});
    });
}

} // namespace sale
