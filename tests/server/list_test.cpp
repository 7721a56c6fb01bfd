// Lists of a journal that is longer than what may be looked at in one go.

#include "apirig.h"

#include <QCoreApplication>

namespace {

constexpr int documents = 9;

/// Each piece has two documents to begin with.
class ListTest : public ApiTest
{
protected:
    explicit ListTest(std::chrono::milliseconds longestSearch = unhurried,
        std::chrono::milliseconds readingTurn = unhurried)
        : ApiTest({.queueLimit = documents,
            .longestSearch = longestSearch,
            .searchPiece = 2,
            .readingTurn = readingTurn})
    {
        for (int i = 1; i <= documents; ++i)
            post("document:" + QByteArray::number(i), cashIn);
    }

    static QByteArray search(const QByteArray& text) { return "/v1/documents?text=" + text; }

    static QStringList idsOf(const Served& served)
    {
        QStringList ids;
        for (const QJsonValue document : served.json().value("documents").toArray())
            ids.append(document.toObject().value("id").toString());
        return ids;
    }

    static void workThrough(const Served& asked)
    {
        while (!asked.pending->isOver())
            QCoreApplication::processEvents();
    }
};

template <int LongestSearch, int ReadingTurn>
struct Limited : ListTest
{
    Limited()
        : ListTest(std::chrono::seconds(LongestSearch), std::chrono::seconds(ReadingTurn))
    {
    }
};
using ShortListTest = Limited<0, 60>;
/// Reads one body at a time.
using SlowListTest = Limited<60, 0>;

TEST_F(ListTest, OthersAreAnsweredWhileItSearchesAndManySearchesTakeTurns)
{
    const Served asked[] = {ask("GET", search("nowhere")), ask("GET", search("document:1"))};
    EXPECT_EQ(ask("GET", "/v1/documents/document:9").status, 200);
    const int before = store.findings;
    QCoreApplication::processEvents();
    EXPECT_EQ(store.findings, before + 1);
    for (const Served& one : asked) {
        ASSERT_TRUE(one.pending);
        workThrough(one);
        EXPECT_EQ(one.later().status, 200) << one.later().all();
        EXPECT_TRUE(one.later().json().value("next").isNull()) << one.later().all();
    }
    EXPECT_EQ(idsOf(asked[1].later()), QStringList{"document:1"});
}

TEST_F(ListTest, TellsSumsAndNumbersAsTheDocumentItselfDoes)
{
    const auto listed = [this](const QByteArray& id) {
        const Served page = ask("GET", "/v1/documents?register=till1");
        for (const QJsonValue document : page.json().value("documents").toArray()) {
            if (document["id"].toString() == QString(id))
                return document.toObject();
        }
        return QJsonObject();
    };
    const auto expectSame = [&](const QByteArray& id, const QJsonValue& total, const QJsonValue& number) {
        const QJsonObject whole = ask("GET", "/v1/documents/" + id).json();
        for (const char* const member : {"total", "shift", "receiptNumber"})
            EXPECT_EQ(listed(id).value(member), whole.value(member)) << id.constData() << member;
        EXPECT_EQ(listed(id).value("total"), total);
        EXPECT_EQ(listed(id).value("receiptNumber"), number);
    };
    ask("DELETE", "/v1/documents/document:9");
    // Listed before, and by what it is now.
    EXPECT_EQ(listed("document:9").value("total"), 100.5);
    post("document:9", sale());
    expectSame("document:9", 305.23, {});
    const QJsonObject mark{{"drive", "9999000000000001"}, {"shift", 4}, {"nextReceipt", 12}};
    store.begin("document:9", {.markBefore = mark, .movement = {{"kind", "sell"}}});
    store.settle("document:9", 1, {.state = sale::DocumentState::Issued});
    expectSame("document:9", 305.23, 12);
    // Looked for once.
    const int before = store.findings;
    ask("GET", "/v1/documents?register=till1");
    EXPECT_LE(store.findings, before + 2);
}

TEST_F(ListTest, AJournalThatFailsMeanwhileIsToldWhoeverIsStillThere)
{
    const Served asked[] = {ask("GET", search("nowhere")), ask("GET", search("nowhere"))};
    asked[0].pending->leave();
    store.isBroken = true;
    workThrough(asked[1]);
    EXPECT_EQ(asked[1].later().status, 503) << asked[1].later().all();
    EXPECT_FALSE(asked[0].later().status);
}

TEST_F(SlowListTest, OthersAreAnsweredWhileItReadsBodies)
{
    const Served asked = ask("GET", "/v1/documents?register=till1");
    ASSERT_TRUE(asked.pending);
    workThrough(asked);
    QStringList wanted;
    for (int i = documents; i > 0; --i)
        wanted.append("document:" + QString::number(i));
    EXPECT_EQ(idsOf(asked.later()), wanted);
    EXPECT_TRUE(asked.later().json().value("next").isNull()) << asked.later().all();
}

TEST_F(ShortListTest, ThePagesTogetherHaveEachDocumentOnce)
{
    for (const QByteArray text : {"document:", "document:2", "nowhere"}) {
        QStringList found;
        QByteArray cursor;
        int pages = 0;
        do {
            const Served page = ask("GET", search(text) + (cursor.isEmpty() ? cursor : "&cursor=" + cursor));
            ASSERT_EQ(page.pending, nullptr);
            ASSERT_LT(++pages, documents) << page.all();
            found += idsOf(page);
            cursor = page.text("next").toLatin1();
        } while (!cursor.isEmpty());
        QStringList wanted;
        for (int i = documents; i > 0; --i) {
            if (const QString id = "document:" + QString::number(i); id.contains(text))
                wanted.append(id);
        }
        EXPECT_EQ(found, wanted);
        EXPECT_GT(pages, 1);
    }
}

} // namespace
