// What every back end of the journal must do.

#include "hostclock.h"
#include "idconflict.h"
#include "journalerror.h"
#include "storefixture.h"

#include <atomic>

using namespace sale;

namespace {

using Store = StoreFixture;

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
        const QString id = QString::number(round);
        std::atomic_int begun = 0;
        const auto sell = [&](DocumentStore& own) {
            own.accept(request(id));
            try {
                begun += own.begin(id, {markBefore}).has_value() ? 1 : 0;
            } catch (const JournalError&) {
            }
        };
        atOnce({sell, sell, sell});
        EXPECT_EQ(begun, 1);
        EXPECT_EQ(store->findId(id)->attemptCount, 1);
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
    for (const quint32 number : {1U, 7U}) {
        word.documentNumber = number;
        EXPECT_THROW(store->settle("unknown", 1, word), JournalError) << "the drive was there already";
    }
    {
        // When nothing of it can come any more.
        const HostClock later(1300);
        bring("later", DocumentState::Issued, 12);
    }
    word.documentNumber = 13;
    EXPECT_THROW(store->settle("unknown", 1, word), JournalError) << "a later document was not there yet";
    word.reached = 13;
    word.documentNumber = 14;
    EXPECT_THROW(store->settle("unknown", 1, word), JournalError) << "nor was the register, later still";
    word.documentNumber = 13;
    store->settle("unknown", 1, word);
    EXPECT_EQ(store->findId("unknown")->state, DocumentState::Issued);
    EXPECT_EQ(store->findId("unknown")->resolvedBy, "anna");
}

TEST_P(Store, WhatNobodyCouldAskAboutIsUnknownAndStillToBeAsked)
{
    for (const DocumentState state : states) {
        const QString id = stateName(state);
        bring(id, state, state == DocumentState::Issued ? 8 : 0);
        const bool isUnderWay = state == DocumentState::Running;
        // Others may do the same.
        for (int time = 0; time < 2; ++time) {
            store->settle(id, store->findId(id)->attemptCount, {.isAsked = false});
            const StoredDocument document = open()->findId(id).value();
            EXPECT_EQ(document.state, isUnderWay ? DocumentState::Unknown : state);
            EXPECT_EQ(document.isToBeAsked(), isUnderWay) << id.toStdString();
        }
    }
    store->settle("running", 1, {});
    EXPECT_FALSE(store->findId("running")->isToBeAsked()) << "it could not tell";
    store->settle("running", 1, {.state = DocumentState::Issued, .documentNumber = 9});
    EXPECT_EQ(store->findId("running")->attempts.constLast().verdict, DocumentState::Issued);
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
    const std::pair<DocumentQuery, QStringList> rows[] = {
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
    for (const auto& [query, ids] : rows)
        EXPECT_EQ(idsOf(query), ids);
    // An earlier id that was begun again is the last one.
    store->accept(request("notIssued"));
    store->begin("notIssued", {markBefore});
    EXPECT_EQ(
        idsOf({.drive = "9999", .limit = 1, .order = DocumentQuery::LastBegun}), QStringList{"notIssued"});
}

INSTANTIATE_TEST_SUITE_P(BackEnds, Store, testing::ValuesIn(backEnds()),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
