#pragma once

#include "documentpools.h"
#include "documentstore.h"
#include "journalerror.h"
#include "sqlconnection.h"
#include "sqlkey.h"

#include <optional>

namespace sale {

/// The journal in a database: what is the same in all of them.
class SqlStore : public DocumentStore, public DocumentPools
{
public:
    static constexpr int usualPatienceMs = 10'000;

    using DocumentStore::accept;
    StoredDocument accept(const DocumentRequest& request, const Condition& condition) override;
    std::optional<int> begin(const QString& id, const AttemptStart& start) override;
    std::optional<int> acceptAndBegin(const DocumentRequest& request, const AttemptStart& start) override;
    void note(const QString& id, int attempt, const AttemptNote& note) override;
    void settle(const QString& id, int attempt, const DocumentEnding& ending) override;
    QList<StoredDocument> find(const DocumentQuery& query) const override;
    StoredDocument withdraw(const QString& id) override;
    StoredDocument move(const QString& id, const QString& registerName) override;
    StoredDocument refuse(const QString& id, const AttemptNote& note) override;
    QStringList expire() override;
    QStringList waitingFor(const QStringList& registers) const override;
    void requireRoom() override;
    QDateTime timeNow() const override;
    std::optional<StoredDocument> claim(const PoolClaim& claim) override;
    QStringList giveBack(const QString& registerName, const QJsonObject& lease = {}) override;
    QStringList giveBackStale(
        std::chrono::seconds age, const QStringList& underWay = {}, const QString& owner = {}) override;
    StoredDocument moveToPool(const QString& id, const QString& pool) override;

    /// Where it is, as it is told to people.
    virtual QString place() const = 0;
    /// A copy that is sound although programs are at work. Throws JournalError when there is such a file, or
    /// the database has other ways.
    virtual void backUp(const QString& fileName) = 0;
    /// What is damaged in it; empty when nothing is.
    virtual QStringList damages() const = 0;
    /// Throws JournalError when another machine goes on with it.
    void requireHere() const;
    /// For an older state that was put back: what waited or was under way in it may have been issued since.
    /// All of that is unknown from now on, and the registers are not asked. Gives the ids.
    QStringList doubtUnfinished();
    /// Drops what was said in documents that were accepted before and have ended: bodies, warnings. Ids,
    /// digests, verdicts and the register's words stay. Gives the number of documents.
    virtual int anonymise(const QDateTime& before);

protected:
    /// The connection may be made later.
    explicit SqlStore(SqlConnection& connection)
        : m_sql(connection)
    {
    }

    JournalError wrongOrder(const QString& id, const QString& why) const;

    // In a transaction of whoever calls them.
    /// Gives what is known of it then, without attempts.
    StoredDocument take(const DocumentRequest& request, const Condition& condition);
    void end(const QString& id, StateReason reason, const QString& now);

    /// Those of a whole document, for documents().
    QString columns(const DocumentQuery& query = {}) const;
    QList<StoredDocument> documents(const QString& statement, const QVariantList& values) const;
    /// That of the key, without attempts; with what is added to the question.
    std::optional<StoredDocument> documentAt(const SqlKey& key, const QString& words = {}) const;
    /// Which of its pools has the document that it gets; empty when none has one.
    QString poolOfFirst(const PoolClaim& claim) const;
    /// The words behind FROM for the first one of a pool, and their values.
    static QString firstOf(const PoolClaim& claim);
    static QVariantList valuesOfFirst(const PoolClaim& claim, const QString& pool);

    // Where databases differ.

    /// An empty one for an id that no document has.
    virtual SqlKey keyOf(const QString& id) const;
    /// Of one that was found.
    virtual SqlKey keyOf(const StoredDocument& document) const;
    /// The document, without attempts. From now on nobody else changes it in this transaction's time.
    virtual std::optional<StoredDocument> held(const QString& id);
    /// The same of all documents that return goods of that sale.
    virtual void holdReturns(const QString& saleId);
    /// Before whatever the owner of a register alone may write; of what is begun on a fiscal drive, that
    /// drive is nobody else's.
    virtual void requireOwner(const QString& drive);
    /// The same of whoever writes for several registers, with one's lease; an empty one is asked for nothing.
    virtual void requireLease(const QString& registerName, const QJsonObject& lease);
    /// A condition of documents whose register nobody owns now but whoever is named by its one value; empty
    /// where there are no others.
    virtual QString isOfNoOther() const;
    /// What is written with an attempt of whoever begins it.
    virtual SqlKey origin() const;
    /// What may be said of a document that its register is known to have not issued.
    virtual DocumentEnding notIssued(const StoredDocument& known, const DocumentEnding& ending);
    /// The id is taken, or stands for another body from now on.
    virtual void writeId(const QString& id, const QString& digest, const QString& accepted);
    /// As if the document had never been accepted.
    virtual void forget(const QString& id);
    virtual QString goodsJoin() const;
    virtual QString textCondition() const;
    /// Without an id.
    virtual std::optional<StoredDocument> claimFirst(const PoolClaim& claim);
    /// What is added to a question for rows that are to be changed: those that others change are left out.
    virtual QString lockingWords() const;
    /// By the one clock that all go by who write it, in the form of storedTime.
    virtual QString now() const;
    /// The moment so long ago, by the database's clock.
    virtual QString momentAgo(std::chrono::seconds age) const;

private:
    /// A question for ids.
    struct Chosen
    {
        QString statement;
        QVariantList values;
    };

    std::optional<int> start(const StoredDocument& known, const AttemptStart& start);
    StoredDocument insert(const DocumentRequest& request);
    StoredDocument renew(const StoredDocument& known, const DocumentRequest& request);
    void writeGoods(const DocumentRequest& request);
    /// Gives the row's place in the order.
    qint64 insertInto(
        const QString& table, const QString& id, const QStringList& columns, const QVariantList& values);
    void update(const QString& id, const QString& changes, const QVariantList& values);
    void updateAttempt(const QString& id, int attempt, const QString& changes, const QVariantList& values);
    /// The attempt, which has that place in the order, is the document's last one.
    void updateBegun(
        const QString& id, int attempt, qint64 sequence, const QString& changes, const QVariantList& values);
    /// The work on a queued document; then the document.
    StoredDocument ifQueued(const QString& id, const std::function<void(const StoredDocument&)>& work);
    /// The change of all of them but those that others are changing, together, behind what must hold then.
    /// Gives their ids.
    QStringList changeEach(const QList<Chosen>& those, const std::function<void(const QString& id)>& change,
        const std::function<void()>& before = {});
    /// Throws JournalError for one that is not there.
    StoredDocument heldExisting(const QString& id);
    void doubt(const StoredDocument& known);
    /// An attempt that was never under way.
    void addEnded(const StoredDocument& known, DocumentState verdict, const AttemptNote& note = {});
    void endAttempt(const QString& id, int attempt, const DocumentEnding& ending);
    void refuseWrongEnding(const StoredDocument& known, int attempt, const DocumentEnding& ending);
    void addAttempts(StoredDocument& document) const;
    QString wordsOf(const DocumentQuery& query, const QString& condition) const;
    /// The one that it names, held.
    std::optional<StoredDocument> unclaimed(const PoolClaim& claim);
    std::optional<StoredDocument> taken(
        const PoolClaim& claim, const std::optional<StoredDocument>& document);
    QStringList giveBackThose(
        const QString& condition, const QVariantList& values, const std::function<void()>& before = {});

    SqlConnection& m_sql;
};

} // namespace sale
