#pragma once

#include "postgres/leasedregister.h"
#include "postgres/postgresconnection.h"
#include "postgres/programlease.h"
#include "postgres/registerfence.h"
#include "sqlstore.h"

#include <QCache>
#include <QDate>

#include <optional>

namespace sale {

/// The journal in a PostgreSQL database, one for all programs of many machines. Documents change under a
/// lock of their own, and wait for each other's acceptance only when they return goods of the same sale. All
/// times are by the server's clock: that of one machine may be wrong, and the documents are everybody's. That
/// a register has not issued a document is believed only when nobody is left who might send it still:
/// otherwise it is unknown.
class PostgresStore : public SqlStore
{
public:
    /// Throws JournalError, also when the tables are not there: migrate makes them.
    explicit PostgresStore(const PostgresPlace& place, int patienceMs = usualPatienceMs);
    ~PostgresStore() override;
    /// Makes the tables, or brings those of a former release up to this one.
    static void migrate(const PostgresPlace& place);
    /// Throws JournalError, which names some of them, while other programs of ours use the database.
    static void requireNobodyElse(const PostgresPlace& place);

    /// From now on what the owner of a register alone may write is refused when the register has another
    /// one.
    void writeAs(const LeasedRegister& lease) { m_lease = lease; }
    /// That of the register whose lease it writes by.
    RegisterFence fence();

    void requireFreeLine(const QString& address, bool doesLineLast) override;
    void meetRegister(const QString& registerName, const std::function<QString()>& drive) override;
    using SqlStore::accept;
    StoredDocument accept(const DocumentRequest& request, const Condition& condition) override;
    std::optional<int> acceptAndBegin(const DocumentRequest& request, const AttemptStart& start) override;
    std::optional<QDateTime> archived(const QString& id) const override;
    QDateTime silentSince(const StoredDocument& document) override;
    void requireRoom() override;
    QString place() const override { return m_connection.place().shown(); }
    /// Not here: PostgreSQL has its own ways.
    void backUp(const QString& fileName) override;
    QStringList damages() const override;

protected:
    QString now() const override;

private:
    SqlKey keyOf(const QString& id) const override;
    SqlKey keyOf(const StoredDocument& document) const override;
    std::optional<StoredDocument> held(const QString& id) override;
    void holdReturns(const QString& saleId) override;
    void requireOwner(const QString& drive) override;
    void requireLease(const QString& registerName, const QJsonObject& lease) override;
    QString isOfNoOther() const override;
    SqlKey origin() const override;
    DocumentEnding notIssued(const StoredDocument& known, const DocumentEnding& ending) override;
    void writeId(const QString& id, const QString& digest, const QString& accepted) override;
    void forget(const QString& id) override;
    QString goodsJoin() const override;
    QString textCondition() const override;
    std::optional<StoredDocument> claimFirst(const PoolClaim& claim) override;
    QString lockingWords() const override;
    QString momentAgo(std::chrono::seconds age) const override;
    /// This program owns nothing, and is about to send a document.
    void joinWorkers(const QString& registerName);
    void holdForProgram(const QString& drive);
    /// Of the document's last attempt: whoever began it may still be about to send it.
    bool mayBeSent(const StoredDocument& document);
    void makeMonths();
    /// What inserts a document.
    void inItsMonth(const std::function<void()>& work);
    bool isHolding() const;
    /// Empty for an id that no document has.
    QString acceptanceOf(const QString& id) const;
    void noteAcceptance(const StoredDocument& document) const;

    PostgresConnection m_connection;
    std::optional<LeasedRegister> m_lease;
    /// Where this program stands among the workers, without owning it.
    QString m_joined;
    /// Its own, for the register that it is at; without one this process has it already.
    std::optional<LeasedRegister> m_programLease;
    std::optional<ProgramLease> m_programRenewal;
    /// The drive of that register, where it is, and whether its line lasts.
    QString m_programDrive;
    QString m_programAddress;
    bool m_doesProgramLineLast = false;
    /// The document that a transaction holds since that moment, and when it was accepted.
    struct Held
    {
        QString id;
        QString acceptance;
        QString moment;
        qint64 transaction = 0;
    };
    mutable Held m_held;
    /// When documents that were met before were accepted, by their ids: for as long as a server has them.
    mutable QCache<QString, QString> m_acceptances{1000};
    /// The day, as this machine calls it, on which it was seen to that tables are there.
    QDate m_monthsMade;
};

} // namespace sale
