#pragma once

#include "documentstore.h"
#include "journalerror.h"
#include "sqliteconnection.h"

#include <optional>

namespace sale {

/// The journal as an SQLite file. Journals of earlier releases are taken over once: one in the same file when
/// it is opened, one elsewhere by takeOver.
class SqliteStore : public DocumentStore
{
public:
    static constexpr int usualPatienceMs = 10'000;

    /// Makes file and folder where they are missing. Throws JournalError, also for a file of a later release.
    /// One of the release before gets what came to the format since, and leaves a copy of what it was beside
    /// it.
    explicit SqliteStore(const QString& fileName, int patienceMs = usualPatienceMs);

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
    QStringList expire(const QDateTime& now) override;
    QList<DocumentCount> countByState(const QString& registerName) const override;

    const QString& fileName() const { return m_connection.fileName(); }
    /// Ids, outcomes and marked goods of a journal of an earlier release, which stays as it is. Nothing when
    /// there is no such file, or it was taken over before.
    void takeOver(const QString& formerFile);

    /// A copy that is sound although programs are at work. Throws JournalError when there is such a file.
    void backUp(const QString& fileName);
    /// A copy for another machine, which goes on with it (moveIn). From then on nothing is written here any
    /// more: whoever tries gets a JournalError, also a program that has the journal open. Once moved it may
    /// be copied again. Throws JournalError, also while a document is under way, or when there is such a
    /// file; then this machine goes on.
    void moveTo(const QString& exportFile);
    bool isMoved() const override;
    /// Makes the journal of this machine of what moveTo has made. Throws JournalError when there is one.
    static void moveIn(const QString& exportFile, const QString& fileName);
    /// What is damaged in the file; empty when nothing is.
    QStringList damages() const;
    /// Drops what was said in documents that were accepted before and have ended: bodies, warnings. Ids,
    /// digests, verdicts and the register's words stay. Gives the number of documents.
    int anonymise(const QDateTime& before);

private:
    bool hasTable(const QString& schema, const char* table) const;
    /// False for a file that has no tables of this format yet. Throws JournalError for one of another program
    /// or of a later release.
    bool isReady() const;
    /// Whether it has what came to the format later.
    bool isComplete() const;
    void makeTables();
    void keepFormer() const;
    void addLater();
    void endHere();
    void goOn();
    void copyForGroup(const QString& fileName) const;
    bool isTakenOver(const QString& name) const;
    void takeOverFrom(const QString& schema, const QString& name);
    // What they do stands in a transaction of whoever calls them.
    void take(const DocumentRequest& request, const Condition& condition);
    std::optional<int> start(const QString& id, const AttemptStart& start);
    void insert(const DocumentRequest& request);
    void renew(const StoredDocument& known, const DocumentRequest& request);
    void writeGoods(const DocumentRequest& request);
    void end(const QString& id, StateReason reason);
    /// The work on a queued document; then the document.
    StoredDocument ifQueued(const QString& id, const std::function<void(const StoredDocument&)>& work);
    StoredDocument existing(const QString& id) const;
    JournalError wrongOrder(const QString& id, const QString& why) const;
    void endAttempt(const QString& id, int attempt, const DocumentEnding& ending);
    void refuseWrongEnding(const StoredDocument& known, int attempt, const DocumentEnding& ending) const;
    void addAttempts(StoredDocument& document) const;

    SqliteConnection m_connection;
};

} // namespace sale
