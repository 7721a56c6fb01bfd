#pragma once

#include "sqliteconnection.h"
#include "sqlstore.h"

namespace sale {

/// The journal as an SQLite file. Journals of earlier releases are taken over once: one in the same file when
/// it is opened, one elsewhere by takeOver.
class SqliteStore : public SqlStore
{
public:
    /// Makes file and folder where they are missing. Throws JournalError, also for a file of a later release.
    /// One of the release before gets what came to the format since, and leaves a copy of what it was beside
    /// it.
    explicit SqliteStore(const QString& fileName, int patienceMs = usualPatienceMs);

    QString place() const override { return fileName(); }
    const QString& fileName() const { return m_connection.fileName(); }
    /// Ids, outcomes and marked goods of a journal of an earlier release, which stays as it is. Nothing when
    /// there is no such file, or it was taken over before.
    void takeOver(const QString& formerFile);

    void backUp(const QString& fileName) override;
    /// A copy for another machine, which goes on with it (moveIn). From then on nothing is written here any
    /// more: whoever tries gets a JournalError, also a program that has the journal open. Once moved it may
    /// be copied again. Throws JournalError, also while a document is under way, or when there is such a
    /// file; then this machine goes on.
    void moveTo(const QString& exportFile);
    bool isMoved() const override;
    /// Makes the journal of this machine of what moveTo has made. Throws JournalError when there is one.
    static void moveIn(const QString& exportFile, const QString& fileName);
    QStringList damages() const override;
    int anonymise(const QDateTime& before) override;

private:
    bool hasTable(const QString& schema, const char* table) const;
    bool hasColumn(const char* table, const char* name) const;
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

    SqliteConnection m_connection;
};

} // namespace sale
