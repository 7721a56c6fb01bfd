// Files of releases before, and what those do with files of this one.

#include "journalfixture.h"
#include "sqliteconnection.h"
#include "sqlitestore.h"

#include <QDir>
#include <QFileInfo>

using namespace sale;

namespace {

/// As the release before made it.
void takeAwayWhatCameLater(const QString& fileName)
{
    SqliteConnection former(fileName, 0);
    for (const char* const statement :
        {"DROP INDEX documents_by_sale", "DROP INDEX documents_by_place", "DROP INDEX documents_by_state",
            "ALTER TABLE documents DROP COLUMN queued", "ALTER TABLE documents DROP COLUMN return_of"})
        former.execute(statement);
}

TEST_F(Journal, FileOfTheReleaseBeforeGetsWhatCameLater)
{
    {
        SqliteStore store(file);
        saleIn(store).begin(noted);
        store.accept({"left", "sell", "{}", "till1"});
    }
    takeAwayWhatCameLater(file);
    // Two programs that are started at once.
    SqliteStore store(file);
    SqliteStore second(file);
    EXPECT_TRUE(saleIn(store).isUnsettled());
    const QStringList copies = QFileInfo(file).dir().entryList({"*.before-update-*"}, QDir::Files);
    ASSERT_EQ(copies.size(), 1) << "what it was stays";
    SqliteConnection former(QFileInfo(file).dir().filePath(copies.first()), 0);
    EXPECT_FALSE(
        former.value("SELECT 1 FROM pragma_table_info('documents') WHERE name = 'queued'").isValid());
    EXPECT_EQ(former.value("SELECT count(*) FROM documents").toInt(), 2);
    const StoredDocument left = store.findId("left").value();
    EXPECT_EQ(left.state, DocumentState::NotIssued) << "nobody sells it unasked";
    EXPECT_EQ(left.queued, left.accepted);
    store.accept({"back", "sellReturn", {}, {}, {}, {}, "A"});
    EXPECT_EQ(second.find({.returnOf = "A"}).size(), 1);
    EXPECT_TRUE(store.damages().isEmpty());
    // It goes on with the file: its version is the same, and a row of its columns alone is whole.
    EXPECT_EQ(SqliteConnection(file, 0).value("PRAGMA user_version").toInt(), 1);
    SqliteConnection(file, 0).execute(
        "INSERT INTO documents (id, register, kind, body, digest, state, accepted, "
        "start_before) VALUES ('old', '', 'sell', '', '', 'queued', "
        "'2026-01-01T00:00:00.000Z', NULL)");
    EXPECT_EQ(store.findId("old")->queued, store.findId("old")->accepted);
    EXPECT_EQ(SqliteStore(file).findId("old")->state, DocumentState::Queued) << "this is done once";
}

} // namespace
