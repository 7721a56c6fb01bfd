// Files of releases before, and what those do with files of this one.

#include "journalfixture.h"
#include "sqliteconnection.h"
#include "sqlitestore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

using namespace sale;

namespace {

/// A release before at work on a journal: the statements that it has its database do.
class FormerRelease
{
public:
    FormerRelease(const QString& version, const QString& journal)
        : m_connection(journal, 0)
    {
        QFile file(QStringLiteral(SALE_TESTS "/release-%1.sql").arg(version));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        QString name;
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (const QString& line : lines) {
            if (line.startsWith(u':'))
                name = line.mid(1);
            else if (!line.isEmpty() && !line.startsWith(QStringLiteral("--")))
                m_statements[name].append(line);
        }
    }

    /// All of those names, in that order.
    void work(const QStringList& names, const QString& id = {})
    {
        for (const QString& name : names) {
            EXPECT_TRUE(m_statements.contains(name)) << name.toStdString();
            for (QString statement : m_statements.value(name))
                m_connection.execute(statement.replace(u'$', id));
        }
    }

    /// The first row of each question.
    QVariantList ask(const QString& name, const QString& id = {}) const
    {
        QVariantList rows;
        for (QString statement : m_statements.value(name))
            rows.append(m_connection.value(statement.replace(u'$', id)));
        return rows;
    }

private:
    SqliteConnection m_connection;
    QMap<QString, QStringList> m_statements;
};

const QString version = QStringLiteral("0.3.0");
const QStringList soldAtTheSecondAttempt{"accept", "begin", "refuse", "correct", "issue"};

void expectSold(const SqliteStore& store, const QString& id)
{
    const StoredDocument found = store.findId(id).value();
    EXPECT_EQ(found.state, DocumentState::Issued);
    EXPECT_EQ(found.documentNumber, 8U);
    ASSERT_EQ(found.attempts.size(), 2);
    EXPECT_EQ(found.attempts[0].verdict, DocumentState::NotIssued);
    EXPECT_EQ(found.queued, found.accepted);
    EXPECT_EQ(store.find({.goods = "mark of " + id}).size(), 1);
}

TEST_F(Journal, FileOfTheReleaseBeforeGetsWhatCameLater)
{
    {
        FormerRelease former(version, file);
        former.work({"make"});
        former.work(soldAtTheSecondAttempt, "sold");
        former.work({"accept", "begin"}, "broken");
        former.work({"accept"}, "left");
        // It is killed.
    }
    // Two programs that are started at once.
    SqliteStore store(file);
    SqliteStore second(file);
    const QStringList copies = QFileInfo(file).dir().entryList({"*.before-update-*"}, QDir::Files);
    ASSERT_EQ(copies.size(), 1) << "what it was stays";
    SqliteConnection former(QFileInfo(file).dir().filePath(copies.first()), 0);
    EXPECT_FALSE(
        former.value("SELECT 1 FROM pragma_table_info('documents') WHERE name = 'queued'").isValid());
    EXPECT_EQ(former.value("SELECT count(*) FROM documents").toInt(), 3);
    expectSold(store, "sold");
    EXPECT_TRUE(IdentifiedSale(store, store.findId("broken").value()).isUnsettled());
    EXPECT_EQ(store.findId("left")->state, DocumentState::NotIssued) << "nobody sells it unasked";
    store.accept({"back", "sellReturn", {}, {}, {}, {}, "sold"});
    EXPECT_EQ(second.find({.returnOf = "sold"}).size(), 1);
    EXPECT_TRUE(store.damages().isEmpty());
}

// After an update that was taken back, or beside a program that was not updated.
TEST_F(Journal, ReleaseBeforeGoesOnWithTheFile)
{
    SqliteStore store(file);
    store.accept({"ours", "sell", "{}", "till1", {"mark of ours"}, {}, "sold"});
    FormerRelease former(version, file);
    EXPECT_EQ(former.ask("start"), QVariantList{1});
    former.work(soldAtTheSecondAttempt, "sold");
    former.work({"accept", "expire"}, "late");
    former.work({"accept"}, "theirs");
    EXPECT_EQ(former.ask("find", "ours")[0], store.findId("ours")->sequence);
    EXPECT_EQ(former.ask("find", "sold"),
        (QVariantList{store.findId("sold")->sequence, 1, {}, store.findId("sold")->sequence}));
    expectSold(store, "sold");
    EXPECT_EQ(store.findId("late")->reason, StateReason::Expired);
    former.work({"begin", "refuse", "correct", "issue"}, "ours");
    EXPECT_EQ(store.findId("ours")->state, DocumentState::Issued);
    EXPECT_EQ(store.find({.returnOf = "sold"}).size(), 1) << "what it does not know stays";
    former.work({"anonymise"});
    EXPECT_TRUE(store.findId("sold")->request.body.isEmpty());
    EXPECT_EQ(SqliteStore(file).findId("theirs")->state, DocumentState::Queued)
        << "what was left by the release before is ended once";
    EXPECT_TRUE(store.damages().isEmpty());
}

} // namespace
