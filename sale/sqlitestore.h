#pragma once

#include "documentstore.h"
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
    explicit SqliteStore(const QString& fileName, int patienceMs = usualPatienceMs);

    StoredDocument accept(const DocumentRequest& request) override;
    std::optional<int> begin(const QString& id, const AttemptStart& start) override;
    void note(const QString& id, int attempt, const AttemptNote& note) override;
    void settle(const QString& id, int attempt, const DocumentEnding& ending) override;
    QList<StoredDocument> find(const DocumentQuery& query) const override;

    const QString& fileName() const { return m_connection.fileName(); }
    /// Ids, outcomes and marked goods of a journal of an earlier release, which stays as it is. Nothing when
    /// there is no such file, or it was taken over before.
    void takeOver(const QString& formerFile);

    /// A copy that is sound although programs are at work. Throws JournalError when there is such a file.
    void backUp(const QString& fileName);
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
    void makeTables();
    bool isTakenOver(const QString& name) const;
    void takeOverFrom(const QString& schema, const QString& name);
    void insert(const DocumentRequest& request);
    void renew(const StoredDocument& known, const DocumentRequest& request);
    void writeGoods(const DocumentRequest& request);
    void expire(const QString& id);
    void endAttempt(const QString& id, int attempt, const DocumentEnding& ending);
    void refuseWrongEnding(const StoredDocument& known, int attempt, const DocumentEnding& ending) const;
    void addAttempts(StoredDocument& document) const;

    SqliteConnection m_connection;
};

} // namespace sale
