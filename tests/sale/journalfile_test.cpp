// The file of the journal: former ones, other programs' ones, who may use it, and what is said when it fails.

#include "journalfixture.h"
#include "journalplace.h"
#include "sqliteconnection.h"
#include "sqlitestore.h"

#include <QDir>
#include <QFile>

#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <vector>

using namespace sale;

namespace {

class JournalFile : public Journal
{
protected:
    static std::string shownMode(const QString& fileName)
    {
        struct stat status = {};
        EXPECT_EQ(::stat(fileName.toLocal8Bit().constData(), &status), 0) << fileName.toStdString();
        return QByteArray::number(status.st_mode & 07777, 8).toStdString();
    }
};

/// Another user, of one group, as long as it lives; whoever is not root stays who he is.
class AsNobody
{
public:
    static constexpr gid_t group = 65534;

    AsNobody()
    {
        if (m_user != 0)
            return;
        m_groups.resize(::getgroups(0, nullptr));
        ::getgroups(static_cast<int>(m_groups.size()), m_groups.data());
        EXPECT_EQ(::setgroups(0, nullptr) + ::setegid(group) + ::seteuid(group), 0);
    }
    ~AsNobody()
    {
        if (m_user != 0)
            return;
        EXPECT_EQ(::seteuid(0) + ::setegid(0) + ::setgroups(m_groups.size(), m_groups.data()), 0);
    }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;

private:
    const uid_t m_user = ::geteuid();
    std::vector<gid_t> m_groups;
};

/// The tables of earlier releases.
void makeFormer(const QString& fileName, bool withMarks)
{
    SqliteConnection former(fileName, 0);
    former.execute("CREATE TABLE sales (id TEXT PRIMARY KEY, receipt TEXT NOT NULL, outcome TEXT NOT NULL, "
                   "document INTEGER NOT NULL, drive TEXT NOT NULL, document_before INTEGER NOT NULL, "
                   "changed TEXT NOT NULL)");
    for (const auto& [id, outcome] : {std::pair{"A", "issued"}, {"{b}", "pending"}, {"C", "notIssued"}})
        former.execute("INSERT INTO sales VALUES (?, ?, ?, ?, '9999', 7, '2025-12-31 20:59:58')",
            {id, bodyDigest(R"({"a": 1, "b": 2})"), outcome, QByteArray(outcome) == "issued" ? 8 : 0});
    if (!withMarks)
        return;
    former.execute("CREATE TABLE marks (mark TEXT NOT NULL, sale TEXT NOT NULL, id TEXT NOT NULL, "
                   "returned INTEGER NOT NULL, outcome TEXT NOT NULL, document INTEGER NOT NULL, "
                   "drive TEXT NOT NULL, changed TEXT NOT NULL)");
    for (const auto& [mark, sale, id] : {std::tuple{"one", "{b}", "{b}"}, {"two", "{u}", ""}})
        former.execute("INSERT INTO marks VALUES (?, ?, ?, 0, 'issued', 9, '9999', '2025-12-31 20:59:59')",
            {mark, sale, id});
}

TEST_F(JournalFile, FormerOneIsTakenOverOnce)
{
    for (const bool withMarks : {true, false}) {
        for (const bool inPlace : {true, false}) {
            SCOPED_TRACE(withMarks * 2 + inPlace);
            const QTemporaryDir own;
            const QString former = own.filePath("former");
            const QString name = inPlace ? former : own.filePath("sales");
            makeFormer(former, withMarks);
            for (int opening = 0; opening < 2; ++opening) {
                SqliteStore store(name);
                store.takeOver(former);
                store.takeOver(own.filePath("none"));
                EXPECT_EQ(saleIn(store, "A").verdict(), Verdict(Outcome::Issued, 8));
                EXPECT_EQ(saleIn(store, "A").record()->settled.toUTC().toString(Qt::ISODate),
                    "2025-12-31T20:59:58Z");
                EXPECT_EQ(DriveMark::fromJson(saleIn(store, "{b}").lastAttempt()->start.markBefore), noted);
                EXPECT_EQ(saleIn(store, "{b}").isUnsettled(), opening == 0);
                EXPECT_EQ(saleIn(store, "C").verdict(), Outcome::NotIssued);
                EXPECT_EQ(store.find({.goods = "one"}).size(), withMarks);
                EXPECT_EQ(store.find({.goods = "two"}).size(), withMarks);
                if (opening == 0)
                    store.settle("{b}", 1, {.state = DocumentState::Issued, .documentNumber = 9});
            }
        }
    }
}

TEST_F(JournalFile, FormerOneThatIsBrokenOrLockedIsNamed)
{
    const QString former = folder.filePath("former");
    makeFormer(former, false);
    const auto told = [&] {
        SqliteStore store(file, 0);
        QString text;
        for (int asking = 0; asking < 2; ++asking) {
            text = textOf([&] { store.takeOver(former); });
            EXPECT_TRUE(text.contains(former) && !text.contains(file)) << text.toStdString();
        }
        return text;
    };
    QFile broken(former);
    ASSERT_TRUE(broken.open(QIODevice::ReadWrite));
    const QByteArray whole = broken.readAll();
    constexpr int page = 4096;
    const QByteArray noise(page, '\xff');
    for (const QByteArray& content :
        {noise, whole.chopped(page), whole.left(page) + noise + whole.mid(2 * page)}) {
        broken.resize(0);
        broken.seek(0);
        broken.write(content);
        broken.flush();
        told();
    }
    broken.remove();
    makeFormer(former, false);
    SqliteConnection other(former, 0);
    other.execute("BEGIN IMMEDIATE");
    EXPECT_TRUE(told().contains("try again") && !told().contains("move it away"));
    other.execute("ROLLBACK");
    other.execute("ALTER TABLE sales DROP COLUMN drive");
    EXPECT_TRUE(told().contains("former journal " + former));
}

TEST_F(JournalFile, FormerOneThatCannotBeSeenIsNotTakenForNone)
{
    const QString link = folder.filePath("link");
    ASSERT_TRUE(QFile::link(folder.filePath("unmounted"), link));
    const QString closed = folder.filePath("closed");
    ASSERT_TRUE(QDir().mkdir(closed));
    ASSERT_EQ(::chmod(closed.toLocal8Bit().constData(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().toLocal8Bit().constData(), 0755), 0);
    SqliteStore store(file);
    for (const QString& hidden : {link, link + "/frctl/sales.sqlite", closed + "/sales.sqlite"}) {
        const AsNobody user;
        EXPECT_TRUE(textOf([&] { store.takeOver(hidden); }).contains(hidden)) << hidden.toStdString();
    }
    for (const char* const name : {"none", "none/sales.sqlite", "data/sales.sqlite/sales.sqlite"})
        EXPECT_EQ(textOf([&] { store.takeOver(folder.filePath(name)); }), QString()) << name;
}

TEST_F(JournalFile, FileOfAnotherProgramIsLeftAlone)
{
    for (const char* const version : {"0", "1", "byte"}) {
        const QString foreign = folder.filePath(version);
        QFile written(foreign);
        ASSERT_TRUE(written.open(QIODevice::ReadWrite));
        if (foreign.endsWith("byte")) {
            written.write("x");
            written.flush();
        } else {
            SqliteConnection(foreign, 0).execute("CREATE TABLE other (a INTEGER)");
            SqliteConnection(foreign, 0).execute(QString("PRAGMA user_version = ") + version);
        }
        written.seek(0);
        const QByteArray before = written.readAll();
        EXPECT_TRUE(textOf([&] { SqliteStore{foreign}; }).contains("another program"));
        written.seek(0);
        EXPECT_EQ(written.readAll(), before);
    }
    saleIn(*std::make_unique<SqliteStore>(file)).begin(noted);
    // As the first ones of the format were.
    SqliteConnection(file, 0).execute("PRAGMA application_id = 0");
    SqliteStore store(file);
    EXPECT_TRUE(saleIn(store).isUnsettled());
}

TEST_F(JournalFile, PlaceIsTheMachinesWhereThePackageMadeIt)
{
    qunsetenv("FRSPF_JOURNAL");
    qputenv("XDG_STATE_HOME", folder.path().toLocal8Bit());
    EXPECT_EQ(journalPlace(folder.filePath("none")), folder.filePath("frspf/sales.sqlite"));
    EXPECT_EQ(journalPlace(folder.path()), folder.filePath("sales.sqlite"));
    // Another user, without the group.
    const QTemporaryDir closed;
    const auto told = [&closed] {
        const AsNobody user;
        return textOf([&closed] { journalPlace(closed.path()); });
    };
    const bool isRoot = ::geteuid() == 0;
    const std::tuple<gid_t, mode_t, std::optional<mode_t>, const char*> rows[]
        = {{AsNobody::group - 1, 0570, {}, "be of the group 65533 "}, {0, 0570, {}, "this user can write"},
            {AsNobody::group, 0570, 0600, "the file is not for its group"},
            {0, 0755, 0666, "be able to write its folder, too"}};
    for (const auto& [group, folderMode, fileMode, toDo] : rows) {
        QFile::remove(closed.filePath("sales.sqlite"));
        if (fileMode) {
            QFile made(closed.filePath("sales.sqlite"));
            ASSERT_TRUE(made.open(QIODevice::WriteOnly));
            ::chmod(made.fileName().toLocal8Bit().constData(), *fileMode);
        }
        ASSERT_TRUE(!isRoot || ::chown(closed.path().toLocal8Bit().constData(), 0, group) == 0);
        ::chmod(closed.path().toLocal8Bit().constData(), folderMode);
        if (!isRoot)
            continue;
        EXPECT_TRUE(told().contains(closed.filePath("sales.sqlite"))) << told().toStdString();
        EXPECT_TRUE(told().contains(toDo)) << told().toStdString();
    }
    EXPECT_TRUE(textOf([this] { SqliteStore{folder.filePath("file/sales.sqlite")}; }).isEmpty());
    ASSERT_TRUE(QFile(folder.filePath("plain")).open(QIODevice::WriteOnly));
    EXPECT_TRUE(
        textOf([this] { SqliteStore{folder.filePath("plain/sales.sqlite")}; }).contains("is no folder"));
    // The disk that it is on is not there.
    const QString link = folder.filePath("link");
    ASSERT_TRUE(QFile::link(folder.filePath("unmounted"), link));
    EXPECT_TRUE(textOf([&link] { journalPlace(link); }).contains(link));
    qputenv("FRSPF_JOURNAL", "/elsewhere");
    EXPECT_EQ(journalPlace(closed.path()), QStringLiteral("/elsewhere"));
}

TEST_F(JournalFile, FailureSaysWhichFileAndWhatToDo)
{
    const auto isTold = [](const QString& told, const QString& name, const char* toDo) {
        EXPECT_TRUE(told.contains(name)) << told.toStdString();
        EXPECT_TRUE(told.contains(toDo)) << told.toStdString();
    };
    const QString damaged = folder.filePath("damaged");
    QFile text(damaged);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    isTold(textOf([&] { SqliteStore{damaged}; }), damaged, "it is damaged; put a backup");
    isTold(textOf([&] { SqliteStore{folder.path()}; }), folder.path(), "this user can write");

    SqliteStore store(file, 0);
    SqliteConnection other(file, 0);
    other.execute("BEGIN IMMEDIATE");
    isTold(textOf([&] { saleIn(store).begin(noted); }), file, "another program has it locked");
    EXPECT_FALSE(saleIn(store).record()) << "but it can be read";
    EXPECT_EQ(textOf([&] { SqliteStore(file, 0).find({}); }), QString()) << "nor do readers wait";
    other.execute("ROLLBACK");

    saleIn(store).begin(noted);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit usual = {};
    ::getrlimit(RLIMIT_FSIZE, &usual);
    const struct rlimit full = {1, usual.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &full);
    const QString told = textOf([&] { store.settle("A", 1, {}); });
    const QString copy = folder.filePath("copy");
    const QString toldOfCopy = textOf([&] { store.backUp(copy); });
    ::setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, handler);
    isTold(told, file, "room");
    isTold(toldOfCopy, copy, "name one on a disk that has room");
    EXPECT_FALSE(toldOfCopy.contains(file)) << "the journal is sound";
    EXPECT_TRUE(saleIn(store).isUnsettled());

    other.execute("PRAGMA user_version = 99");
    isTold(textOf([&] { SqliteStore{file}; }), file, "later release");
}

TEST_F(JournalFile, FileIsForItsGroupAndABackupIsSoundWhileOthersWrite)
{
    const mode_t former = ::umask(0077);
    SqliteStore store(file);
    ::umask(former);
    EXPECT_EQ(shownMode(file), "660");
    EXPECT_EQ(shownMode(file + "-wal"), "660");
    saleIn(store).begin(noted);
    const QString copy = folder.filePath("copy");
    store.backUp(copy);
    EXPECT_EQ(shownMode(copy), "600");
    EXPECT_TRUE(textOf([&] { store.backUp(copy); }).contains("name one that is not there"));
    SqliteStore opened(copy);
    EXPECT_TRUE(saleIn(opened).isUnsettled());
    EXPECT_TRUE(opened.damages().isEmpty());
}

TEST_F(JournalFile, AnonymisedTextIsInNoPageOfTheFile)
{
    const QByteArray secret = "anna@example.org";
    {
        SqliteStore store(file);
        for (const char* const id : {"A", "U"}) {
            IdentifiedSale sale(store, id, secret + id);
            sale.begin(noted);
            sale.note({receipt::Finding{receipt::Finding::Warning, {}, secret, "was cut"}});
            sale.settle(*id == 'A' ? Verdict(Outcome::Issued, 8) : Verdict(Outcome::Unknown));
        }
        EXPECT_EQ(store.anonymise(QDateTime::currentDateTime().addDays(-1)), 0);
        EXPECT_EQ(store.anonymise(QDateTime::currentDateTime().addSecs(1)), 1);
        EXPECT_EQ(store.anonymise(QDateTime::currentDateTime().addSecs(1)), 0);
        // The same receipt is still known as such.
        EXPECT_EQ(IdentifiedSale(store, "A", secret + "A").verdict(), Verdict(Outcome::Issued, 8));
        QFile written(file);
        ASSERT_TRUE(written.open(QIODevice::ReadOnly));
        const QByteArray bytes = written.readAll();
        EXPECT_FALSE(bytes.contains(secret + "A"));
        EXPECT_TRUE(bytes.contains(secret + "U")) << "a person must still look at it";
    }
}

} // namespace
