// What every back end of the journal must do.

#include "currenttime.h"
#include "idconflict.h"
#include "journalerror.h"
#include "mockfactory.h"
#include "sqlitestore.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <latch>
#include <memory>
#include <thread>

using namespace sale;

namespace {

struct BackEnd
{
    const char* name;
    /// Another opening of the same journal, as another program has it.
    std::unique_ptr<DocumentStore> (*open)(const QTemporaryDir& folder);
};

const BackEnd backEnds[] = {{"Sqlite", [](const QTemporaryDir& folder) {
                                 return std::unique_ptr<DocumentStore>(
                                     std::make_unique<SqliteStore>(folder.filePath("data/sales.sqlite")));
                             }}};

const QJsonObject markBefore{{"drive", "9999"}, {"lastDocument", 7}};
constexpr std::array states{DocumentState::Queued, DocumentState::Running, DocumentState::Issued,
    DocumentState::NotIssued, DocumentState::Unknown};

class Store : public testing::TestWithParam<BackEnd>
{
protected:
    std::unique_ptr<DocumentStore> open() const { return GetParam().open(folder); }

    static DocumentRequest request(const QString& id, const QByteArray& body = R"({"a": 1, "b": 2})")
    {
        return {id, "sell", body, "till1"};
    }

    /// Brings a new document into the state.
    void bring(const QString& id, DocumentState state, quint32 number = 0)
    {
        store->accept(request(id));
        if (state == DocumentState::Queued)
            return;
        const int attempt = store->begin(id, {markBefore}).value();
        if (state != DocumentState::Running)
            store->settle(id, attempt, {.state = state, .documentNumber = number});
    }

    QStringList idsOf(const DocumentQuery& query) const
    {
        QStringList ids;
        for (const StoredDocument& document : store->find(query))
            ids.append(document.request.id);
        return ids;
    }

    QTemporaryDir folder;
    std::unique_ptr<DocumentStore> store = open();
};

TEST_P(Store, IdIsOneDocumentForEver)
{
    for (const DocumentState state : states) {
        const QString id = stateName(state);
        SCOPED_TRACE(id.toStdString());
        bring(id, state);
        const QDateTime accepted = store->findId(id)->accepted;
        const DocumentRequest corrected = request(id, R"({"a": 2})");
        if (state == DocumentState::NotIssued) {
            EXPECT_EQ(store->accept(corrected).state, DocumentState::Queued);
            EXPECT_EQ(store->begin(id, {markBefore}), 2);
            continue;
        }
        // The same, written in another way.
        EXPECT_EQ(store->accept(request(id, R"({ "b":2,"a":1 })")).state, state);
        try {
            store->accept(corrected);
            FAIL();
        } catch (const IdConflict& conflict) {
            EXPECT_EQ(conflict.time(), accepted);
        }
        if (state == DocumentState::Queued)
            EXPECT_EQ(store->begin(id, {markBefore}), 1);
        else
            EXPECT_THROW(store->begin(id, {markBefore}), JournalError);
    }
}

TEST_P(Store, OfSeveralThatSellTheSameAtOnceOneDoes)
{
    for (int round = 0; round < 20; ++round) {
        std::atomic_int begun = 0;
        std::latch start(3);
        const auto sell = [&] {
            const auto own = open();
            start.arrive_and_wait();
            own->accept(request(QString::number(round)));
            try {
                begun += own->begin(QString::number(round), {markBefore}).has_value() ? 1 : 0;
            } catch (const JournalError&) {
            }
        };
        std::array<std::thread, 3> sellers{std::thread(sell), std::thread(sell), std::thread(sell)};
        for (std::thread& seller : sellers)
            seller.join();
        EXPECT_EQ(begun, 1);
        EXPECT_EQ(store->findId(QString::number(round))->attemptCount, 1);
    }
}

TEST_P(Store, EachAttemptIsKeptAsItWas)
{
    const QJsonObject failure{{"text", "Нет бумаги"}, {"exception", "FrPaperException"}};
    store->accept(request("A", "first"));
    store->begin("A", {markBefore, {{"kind", "sell"}}});
    store->note("A", 1, {.failure = failure});
    store->note("A", 1, {.markAfter = markBefore, .warnings = {"not checked"}});
    store->settle("A", 1, {DocumentState::NotIssued, StateReason::Refused});
    store->accept(request("A", "second"));
    store->begin("A", {markBefore});
    store->settle(
        "A", 2, {.state = DocumentState::Issued, .documentNumber = 8, .isNumberRead = false, .times = 2});
    const StoredDocument document = open()->findId("A").value();
    EXPECT_EQ(document.request.body, "second");
    EXPECT_EQ(document.request.registerName, "till1");
    EXPECT_EQ(document.state, DocumentState::Issued);
    EXPECT_EQ(document.drive, "9999");
    EXPECT_EQ(document.documentNumber, 8U);
    EXPECT_FALSE(document.isNumberRead);
    EXPECT_EQ(document.times, 2);
    ASSERT_EQ(document.attempts.size(), 2);
    const StoredAttempt& first = document.attempts.constFirst();
    EXPECT_EQ(first.body, "first");
    EXPECT_EQ(first.digest, bodyDigest("first"));
    EXPECT_EQ(first.start.markBefore, markBefore);
    EXPECT_EQ(first.start.movement, (QJsonObject{{"kind", "sell"}}));
    EXPECT_EQ(first.note.markAfter, markBefore);
    EXPECT_EQ(first.note.failure, failure);
    EXPECT_EQ(first.note.warnings, QJsonArray{"not checked"});
    EXPECT_EQ(first.verdict, DocumentState::NotIssued);
    EXPECT_LE(first.begun, first.ended);
    EXPECT_TRUE(document.attempts.constLast().body.isEmpty());
    EXPECT_EQ(document.attempts.constLast().documentNumber, 8U);
}

TEST_P(Store, WhatIsIssuedStaysSo)
{
    bring("A", DocumentState::Issued, 8);
    store->settle("A", 1, {.state = DocumentState::Issued, .documentNumber = 8});
    EXPECT_THROW(store->settle("A", 1, {.state = DocumentState::NotIssued}), JournalError);
    EXPECT_THROW(store->settle("A", 1, {.state = DocumentState::Issued, .documentNumber = 9}), JournalError);
    // A program that was held up finds that another has tried again.
    bring("B", DocumentState::NotIssued);
    store->accept(request("B"));
    store->begin("B", {markBefore});
    EXPECT_THROW(store->settle("B", 1, {.state = DocumentState::NotIssued}), JournalError);
    EXPECT_THROW(store->settle("C", 1, {}), JournalError);
    EXPECT_EQ(store->findId("A")->documentNumber, 8U);
    EXPECT_EQ(store->findId("B")->state, DocumentState::Running);
}

TEST_P(Store, PersonsWordIsTakenForWhatIsUnknown)
{
    for (const DocumentState state : states) {
        bring(stateName(state), state, state == DocumentState::Issued ? 8 : 0);
        const DocumentEnding word{
            .state = DocumentState::Issued, .documentNumber = 9, .by = "anna", .note = "stands on the tape"};
        if (state == DocumentState::Unknown)
            continue;
        EXPECT_THROW(
            store->settle(stateName(state), state == DocumentState::Queued ? 0 : 1, word), JournalError);
    }
    DocumentEnding word{.state = DocumentState::Issued, .documentNumber = 8, .by = "anna"};
    EXPECT_THROW(store->settle("unknown", 1, word), JournalError) << "another document has the number";
    word.documentNumber = 9;
    store->settle("unknown", 1, word);
    EXPECT_EQ(store->findId("unknown")->state, DocumentState::Issued);
    EXPECT_EQ(store->findId("unknown")->resolvedBy, "anna");
}

class LaterTime : public CurrentTime
{
public:
    QDateTime getCurrentDateTime() const override { return CurrentTime::getCurrentDateTime().addSecs(60); }
};

TEST_P(Store, WhatIsTooLateIsNotBegun)
{
    DocumentRequest soon = request("A");
    soon.startBefore = QDateTime::currentDateTime().addSecs(30);
    store->accept(soon);
    soon.id = "B";
    store->accept(soon);
    EXPECT_EQ(store->begin("A", {markBefore}), 1);
    LaterTime later;
    MockFactory<CurrentTime>::mocked = &later;
    EXPECT_FALSE(store->begin("B", {markBefore}));
    MockFactory<CurrentTime>::mocked = nullptr;
    EXPECT_EQ(store->findId("B")->state, DocumentState::NotIssued);
    EXPECT_EQ(store->findId("B")->reason, StateReason::Expired);
}

TEST_P(Store, DocumentsAreFoundByWhatTheyAre)
{
    for (const DocumentState state : states)
        bring(stateName(state), state, state == DocumentState::Issued ? 8 : 0);
    DocumentRequest other = request("other", R"({"b": 3, "name": "Хлеб"})");
    other.registerName = "till2";
    other.goods = {"piece"};
    store->accept(other);
    store->begin("other", {});
    const qint64 third = store->findId("issued")->sequence;
    const struct
    {
        DocumentQuery query;
        QStringList ids;
    } rows[] = {
        {{}, {"queued", "running", "issued", "notIssued", "unknown", "other"}},
        {{.states = {DocumentState::Running, DocumentState::Unknown}}, {"running", "unknown", "other"}},
        {{.registerName = "till2"}, {"other"}},
        {{.drive = "9999", .documentNumber = 8}, {"issued"}},
        {{.goods = "piece"}, {"other"}},
        {{.since = QDateTime::currentDateTime().addSecs(60)}, {}},
        {{.after = third, .limit = 2}, {"notIssued", "unknown"}},
        {{.limit = 1, .order = DocumentQuery::Newest}, {"other"}},
        {{.before = third, .limit = 1, .order = DocumentQuery::Newest}, {"running"}},
        {{.states = {DocumentState::Queued}, .registerName = "till1", .limit = 1}, {"queued"}},
        {{.text = "OTHE"}, {"other"}},
        {{.text = "\"b\": 3"}, {"other"}},
        {{.text = "Хлеб"}, {"other"}},
        {{.text = "%"}, {}},
        {{.drive = "9999", .limit = 1, .order = DocumentQuery::LastBegun}, {"unknown"}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(idsOf(row.query), row.ids);
    // An earlier id that was begun again is the last one.
    store->accept(request("notIssued"));
    store->begin("notIssued", {markBefore});
    EXPECT_EQ(
        idsOf({.drive = "9999", .limit = 1, .order = DocumentQuery::LastBegun}), QStringList{"notIssued"});
}

/// What is done with a document that waits, and what comes of it.
struct QueueVerb
{
    StoredDocument (*work)(DocumentStore& store, const QString& id);
    DocumentState state;
    StateReason reason;
    const char* registerName;
    int attempts;
};

const AttemptNote refusal{.failure = {{"text", "no"}}, .warnings = {"cut"}};
const QueueVerb queueVerbs[] = {
    {[](DocumentStore& store, const QString& id) { return store.withdraw(id); }, DocumentState::NotIssued,
        StateReason::Deleted, "till1", 0},
    {[](DocumentStore& store, const QString& id) { return store.move(id, "till2"); }, DocumentState::Queued,
        StateReason::None, "till2", 0},
    {[](DocumentStore& store, const QString& id) { return store.refuse(id, refusal); },
        DocumentState::NotIssued, StateReason::Refused, "till1", 1},
};

TEST_P(Store, QueueIsChangedWhereTheDocumentStillWaits)
{
    int round = 0;
    for (const QueueVerb& verb : queueVerbs) {
        ++round;
        for (const DocumentState state : states) {
            const QString id = stateName(state) + QString::number(round);
            SCOPED_TRACE(id.toStdString());
            bring(id, state, static_cast<quint32>(state == DocumentState::Issued ? 7 + round : 0));
            const StoredDocument before = store->findId(id).value();
            const StoredDocument after = verb.work(*store, id);
            if (state != DocumentState::Queued) {
                EXPECT_EQ(after.state, state);
                EXPECT_EQ(after.request.registerName, "till1");
                EXPECT_EQ(after.attempts.size(), before.attempts.size());
                continue;
            }
            EXPECT_EQ(after.state, verb.state);
            EXPECT_EQ(after.reason, verb.reason);
            EXPECT_EQ(after.request.registerName, verb.registerName);
            EXPECT_EQ(after.attempts.size(), verb.attempts);
            EXPECT_EQ(after.settled.isValid(), verb.state == DocumentState::NotIssued);
            // Whoever has picked it out of the queue before comes too late.
            EXPECT_THROW(store->begin(id, {markBefore, {}, "till1"}), JournalError);
        }
        EXPECT_THROW(verb.work(*store, "none"), JournalError);
    }
    EXPECT_EQ(store->begin("queued2", {markBefore, {}, "till2"}), 1);
}

TEST_P(Store, RefusalIsKeptAsAnAttemptThatWasNeverUnderWay)
{
    store->accept(request("A"));
    store->refuse("A", refusal);
    EXPECT_EQ(store->accept(request("A", "corrected")).state, DocumentState::Queued);
    EXPECT_EQ(store->begin("A", {markBefore}), 2);
    const StoredAttempt first = store->findId("A")->attempts.constFirst();
    EXPECT_EQ(first.verdict, DocumentState::NotIssued);
    EXPECT_EQ(first.begun, first.ended);
    EXPECT_TRUE(first.start.markBefore.isEmpty() && first.start.movement.isEmpty());
    EXPECT_EQ(first.note.failure, refusal.failure);
    EXPECT_EQ(first.note.warnings, refusal.warnings);
    EXPECT_EQ(first.body, R"({"a": 1, "b": 2})");
}

TEST_P(Store, OfThoseWhoComeForOneInTheQueueOneSucceeds)
{
    for (int round = 0; round < 20; ++round) {
        const QString id = QString::number(round);
        store->accept(request(id));
        std::latch start(2);
        bool isBegun = false;
        DocumentState withdrawn = DocumentState::Queued;
        const auto begin = [&] {
            const auto own = open();
            start.arrive_and_wait();
            try {
                isBegun = own->begin(id, {markBefore, {}, "till1"}).has_value();
            } catch (const JournalError&) {
            }
        };
        const auto withdraw = [&] {
            const auto own = open();
            start.arrive_and_wait();
            withdrawn = own->withdraw(id).state;
        };
        std::thread worker(begin);
        std::thread client(withdraw);
        worker.join();
        client.join();
        EXPECT_EQ(withdrawn, isBegun ? DocumentState::Running : DocumentState::NotIssued);
        EXPECT_EQ(store->findId(id)->state, withdrawn);
    }
}

TEST_P(Store, WhatIsTooLateExpiresTogether)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const auto& [id, seconds] : {std::pair{"late", -1}, {"soon", 60}, {"later", -2}, {"begun", 30}}) {
        DocumentRequest own = request(id);
        own.startBefore = now.addSecs(seconds);
        store->accept(own);
    }
    store->accept(request("patient"));
    store->begin("begun", {markBefore});
    const QStringList late{"late", "later"};
    EXPECT_EQ(store->expire(now), late);
    EXPECT_EQ(store->expire(now), QStringList());
    EXPECT_EQ(store->expire(now.addSecs(90)), QStringList{"soon"});
    for (const QString& id : late)
        EXPECT_EQ(store->findId(id)->reason, StateReason::Expired);
    EXPECT_EQ(store->findId("begun")->state, DocumentState::Running);
    EXPECT_EQ(store->findId("patient")->state, DocumentState::Queued);
}

TEST_P(Store, DocumentThatIsMadeAtOnceNeverWaits)
{
    EXPECT_EQ(store->acceptAndBegin(request("A"), {markBefore}), 1);
    EXPECT_EQ(store->findId("A")->state, DocumentState::Running);
    EXPECT_THROW(store->acceptAndBegin(request("A"), {markBefore}), JournalError);
    EXPECT_THROW(store->acceptAndBegin(request("A", "other"), {markBefore}), IdConflict);
    store->settle("A", 1, {.state = DocumentState::NotIssued});
    // What cannot be begun is not accepted either.
    EXPECT_THROW(store->acceptAndBegin(request("A"), {markBefore, {}, "till2"}), JournalError);
    EXPECT_EQ(store->findId("A")->state, DocumentState::NotIssued);
    EXPECT_EQ(store->acceptAndBegin(request("A"), {markBefore}), 2);
}

TEST_P(Store, WhatIsAcceptedMeetsItsCondition)
{
    DocumentRequest back = request("back");
    back.returnOf = "sale";
    const auto refused = [] { throw std::runtime_error("no"); };
    EXPECT_THROW(store->accept(back, refused), std::runtime_error);
    EXPECT_FALSE(store->findId("back"));
    store->accept(back);
    // One that is known is not judged again, since nothing is accepted.
    EXPECT_EQ(store->accept(back, refused).state, DocumentState::Queued);
    EXPECT_EQ(idsOf({.returnOf = "sale"}), QStringList{"back"});
    DocumentRequest other = back;
    other.returnOf = "another";
    EXPECT_THROW(store->accept(other), IdConflict);
    store->withdraw("back");
    EXPECT_THROW(store->accept(back, refused), std::runtime_error);
    EXPECT_EQ(store->findId("back")->state, DocumentState::NotIssued);
    EXPECT_EQ(store->accept(other).request.returnOf, "another");
}

TEST_P(Store, OfConditionsThatExcludeEachOtherOneIsMet)
{
    for (int round = 0; round < 20; ++round) {
        const QString sale = QString::number(round);
        std::latch start(3);
        std::atomic_int accepted = 0;
        const auto giveBack = [&](int number) {
            const auto own = open();
            DocumentRequest back = request(QString("%1-%2").arg(round).arg(number));
            back.returnOf = sale;
            start.arrive_and_wait();
            try {
                own->accept(back, [&] {
                    if (!own->find({.returnOf = sale}).isEmpty())
                        throw std::runtime_error("returned");
                });
                ++accepted;
            } catch (const std::runtime_error&) {
            }
        };
        std::array<std::thread, 3> clients{
            std::thread(giveBack, 1), std::thread(giveBack, 2), std::thread(giveBack, 3)};
        for (std::thread& client : clients)
            client.join();
        EXPECT_EQ(accepted, 1);
    }
}

TEST_P(Store, DocumentsAreCountedByWhatBecameOfThem)
{
    for (const DocumentState state : states)
        bring(stateName(state), state);
    bring("second", DocumentState::Issued, 9);
    store->accept(request("gone"));
    store->withdraw("gone");
    DocumentRequest other = request("other");
    other.registerName = "till2";
    store->accept(other);
    const auto shown = [this](const QString& registerName) {
        QStringList counts;
        for (const DocumentCount& count : store->countByState(registerName))
            counts.append(
                QString("%1 %2 %3").arg(stateName(count.state), reasonName(count.reason)).arg(count.count));
        counts.sort();
        return counts;
    };
    EXPECT_EQ(shown("till1"),
        (QStringList{
            "issued  2", "notIssued  1", "notIssued deleted 1", "queued  1", "running  1", "unknown  1"}));
    EXPECT_EQ(shown("till2"), QStringList{"queued  1"});
    EXPECT_TRUE(shown({}).contains("queued  2"));
}

INSTANTIATE_TEST_SUITE_P(BackEnds, Store, testing::ValuesIn(backEnds),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
