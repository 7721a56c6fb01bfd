// What every back end of the journal must do with documents that wait.

#include "hostclock.h"
#include "idconflict.h"
#include "journalerror.h"
#include "returnrefused.h"
#include "salereturn.h"
#include "sqlstore.h"
#include "storefixture.h"

#include <atomic>

using namespace sale;

namespace {

class StoreQueue : public StoreFixture
{
protected:
    QStringList expireAt(qint64 secondsAhead)
    {
        const HostClock clock(secondsAhead);
        return store->expire();
    }
};

TEST_P(StoreQueue, QueueIsChangedWhereTheDocumentStillWaits)
{
    const AttemptNote refusal{.failure = {{"text", "no"}}, .warnings = {"cut"}};
    using Verb = std::function<StoredDocument(const QString&)>;
    const std::tuple<Verb, DocumentState, StateReason, const char*, int> verbs[] = {
        {[&](const QString& id) { return store->withdraw(id); }, DocumentState::NotIssued,
            StateReason::Deleted, "till1", 0},
        {[&](const QString& id) { return store->move(id, "till2"); }, DocumentState::Queued,
            StateReason::None, "till2", 0},
        {[&](const QString& id) { return store->refuse(id, refusal); }, DocumentState::NotIssued,
            StateReason::Refused, "till1", 1},
    };
    int round = 0;
    for (const auto& [work, then, reason, registerName, attempts] : verbs) {
        ++round;
        for (const DocumentState state : states) {
            const QString id = stateName(state) + QString::number(round);
            SCOPED_TRACE(id.toStdString());
            bring(id, state, static_cast<quint32>(state == DocumentState::Issued ? 7 + round : 0));
            const StoredDocument before = store->findId(id).value();
            const StoredDocument after = work(id);
            if (state != DocumentState::Queued) {
                EXPECT_EQ(after.state, state);
                EXPECT_EQ(after.request.registerName, "till1");
                EXPECT_EQ(after.attempts.size(), before.attempts.size());
                continue;
            }
            EXPECT_EQ(after.state, then);
            EXPECT_EQ(after.reason, reason);
            EXPECT_EQ(after.request.registerName, registerName);
            EXPECT_EQ(after.attempts.size(), attempts);
            EXPECT_EQ(after.settled.isValid(), then == DocumentState::NotIssued);
            // Whoever has picked it out of the queue before comes too late.
            EXPECT_THROW(store->begin(id, {markBefore, {}, "till1"}), JournalError);
        }
        EXPECT_THROW(work("none"), JournalError);
    }
    EXPECT_EQ(store->begin("queued2", {markBefore, {}, "till2"}), 1);
    // A refusal is kept as an attempt that was never under way.
    EXPECT_EQ(store->accept(request("queued3", "corrected")).state, DocumentState::Queued);
    EXPECT_EQ(store->begin("queued3", {markBefore}), 2);
    const StoredAttempt first = store->findId("queued3")->attempts.constFirst();
    EXPECT_EQ(first.verdict, DocumentState::NotIssued);
    EXPECT_EQ(first.begun, first.ended);
    EXPECT_TRUE(first.start.markBefore.isEmpty() && first.start.movement.isEmpty());
    EXPECT_EQ(first.note.failure, refusal.failure);
    EXPECT_EQ(first.note.warnings, refusal.warnings);
    EXPECT_EQ(first.body, R"({"a": 1, "b": 2})");
}

TEST_P(StoreQueue, WhatWasPostedAnewIsNotBegunAsItWasBefore)
{
    store->accept(request("A"));
    const auto startOf = [](const StoredDocument& read) {
        return AttemptStart{markBefore, {}, "till1", {}, read.digest, read.request.returnOf};
    };
    const AttemptStart first = startOf(store->findId("A").value());
    DocumentRequest anew = request("A", "{}");
    for (const char* const sale : {"", "S"}) {
        store->withdraw("A");
        anew.returnOf = sale;
        store->accept(anew);
        EXPECT_THROW(store->begin("A", first), JournalError);
    }
    AttemptStart ofNoSale = startOf(store->findId("A").value());
    ofNoSale.returnOf.clear();
    EXPECT_THROW(store->begin("A", ofNoSale), JournalError);
    EXPECT_EQ(store->begin("A", startOf(store->findId("A").value())), 1);
}

TEST_P(StoreQueue, OpenDocumentsAreReadPieceByPiece)
{
    for (const auto& [id, name] : {std::pair("C", "till2"), {"A", "till1"}, {"D", "till2"}, {"B", "till1"}})
        store->accept({id, "sell", "{}", name});
    bring("done", DocumentState::Issued, 8);
    EXPECT_EQ(store->waitingFor({"till0", "till2", "till1"}), (QStringList{"till2", "till1"}));
    ASSERT_EQ(store->begin("A", {markBefore}), 1);
    ASSERT_EQ(store->begin("B", {markBefore}), 1);
    EXPECT_EQ(store->waitingFor({"till2", "till1"}), QStringList("till2"));
    DocumentQuery query{.states = {DocumentState::Queued, DocumentState::Running, DocumentState::Unknown},
        .limit = 1,
        .withAttempts = false,
        .withBodies = false};
    QStringList ids;
    for (QList<StoredDocument> found = store->find(query); !found.isEmpty(); found = store->find(query)) {
        ids.append(found.constFirst().request.id);
        EXPECT_TRUE(found.constFirst().request.body.isEmpty());
        query.after = found.constFirst().sequence;
        ASSERT_LT(ids.size(), 9);
    }
    EXPECT_EQ(ids, (QStringList{"C", "A", "D", "B"}));
}

TEST_P(StoreQueue, DocumentWaitsAgainWhenItsAttemptIsOver)
{
    store->accept(request("A"));
    store->accept(request("B"));
    store->begin("A", {markBefore});
    store->settle(
        "A", 1, {.state = DocumentState::NotIssued, .reason = StateReason::Refused, .waitsAgain = true});
    const StoredDocument waiting = store->findId("A").value();
    EXPECT_EQ(waiting.state, DocumentState::Queued);
    EXPECT_EQ(waiting.reason, StateReason::None);
    EXPECT_FALSE(waiting.settled.isValid());
    EXPECT_EQ(waiting.attempts.constFirst().verdict, DocumentState::NotIssued);
    EXPECT_TRUE(waiting.attempts.constFirst().ended.isValid());
    // In its place.
    EXPECT_EQ(idsOf({.states = {DocumentState::Queued}}), (QStringList{"A", "B"}));
    EXPECT_EQ(store->begin("A", {markBefore}), 2);
    // What is issued is not asked for again.
    store->settle("A", 2, {.state = DocumentState::Issued, .documentNumber = 8, .waitsAgain = true});
    EXPECT_EQ(store->findId("A")->state, DocumentState::Issued);
    // Nor what turns out to be issued when it was asked for again already.
    store->begin("B", {markBefore});
    store->settle("B", 1, {.state = DocumentState::NotIssued});
    ASSERT_EQ(store->accept(request("B")).state, DocumentState::Queued);
    store->settle("B", 1, {.state = DocumentState::Issued, .documentNumber = 9});
    EXPECT_THROW(store->begin("B", {markBefore}), JournalError);
}

TEST_P(StoreQueue, OfThoseWhoComeForOneInTheQueueOneSucceeds)
{
    for (int round = 0; round < 20; ++round) {
        const QString id = QString::number(round);
        store->accept(request(id));
        bool isBegun = false;
        DocumentState withdrawn = DocumentState::Queued;
        const auto begin = [&](DocumentStore& own) {
            try {
                isBegun = own.begin(id, {markBefore, {}, "till1"}).has_value();
            } catch (const JournalError&) {
            }
        };
        atOnce({begin, [&](DocumentStore& own) { withdrawn = own.withdraw(id).state; }});
        EXPECT_EQ(withdrawn, isBegun ? DocumentState::Running : DocumentState::NotIssued);
        EXPECT_EQ(store->findId(id)->state, withdrawn);
    }
}

TEST_P(StoreQueue, WhatIsTooLateExpiresTogether)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const auto& [id, seconds] : {std::pair{"late", -1}, {"soon", 60}, {"later", -2}, {"begun", 30}}) {
        DocumentRequest own = request(id);
        own.startBefore = now.addSecs(seconds);
        store->accept(own);
    }
    DocumentRequest spanned = request("spanned");
    spanned.startWithin = std::chrono::seconds(3600);
    store->accept(spanned);
    store->accept(request("patient"));
    store->begin("begun", {markBefore});
    const QStringList late{"late", "later"};
    QStringList expired = store->expire();
    expired.sort();
    EXPECT_EQ(expired, late);
    EXPECT_EQ(store->expire(), QStringList());
    EXPECT_EQ(expireAt(90), QStringList{"soon"});
    EXPECT_EQ(expireAt(3595), QStringList());
    EXPECT_EQ(expireAt(3605), QStringList{"spanned"});
    for (const QString& id : late)
        EXPECT_EQ(store->findId(id)->reason, StateReason::Expired);
    EXPECT_EQ(store->findId("begun")->state, DocumentState::Running);
    EXPECT_EQ(store->findId("patient")->state, DocumentState::Queued);
}

/// Whoever looks at it a second time finds it a second later, as on a machine with too much to do.
class HurryingClock : public HostClock
{
public:
    using HostClock::HostClock;
    QDateTime getCurrentDateTime() const override { return m_start.addSecs(m_looks++); }

private:
    const QDateTime m_start = QDateTime::currentDateTimeUtc();
    mutable int m_looks = 0;
};

TEST_P(StoreQueue, NothingIsKeptAsBegunBehindItsTime)
{
    int begun = 0;
    constexpr int limits = 10;
    for (int limit = 0; limit < limits; ++limit) {
        const QString id = QString::number(limit);
        DocumentRequest own = request(id);
        own.startBefore = QDateTime::currentDateTimeUtc().addSecs(limit);
        const HurryingClock clock(0);
        store->accept(own);
        const bool isBegun = store->begin(id, {markBefore}).has_value();
        const StoredDocument document = store->findId(id).value();
        EXPECT_EQ(document.state, isBegun ? DocumentState::Running : DocumentState::NotIssued);
        EXPECT_EQ(document.reason, isBegun ? StateReason::None : StateReason::Expired);
        if (!isBegun)
            continue;
        ++begun;
        EXPECT_LE(document.begun, document.request.startBefore);
        EXPECT_EQ(document.attempts.constFirst().begun, document.begun);
    }
    EXPECT_GT(begun, 0);
    EXPECT_LT(begun, limits);
}

TEST_P(StoreQueue, OfAnOlderStateWhatWasUnfinishedIsForAPersonToSay)
{
    for (const DocumentState state : states)
        bring(stateName(state), state, state == DocumentState::Issued ? 8 : 0);
    bring("given-up", DocumentState::Running);
    store->settle("given-up", 1, {.isAsked = false});
    const auto doubt = [this] { return dynamic_cast<SqlStore&>(*store).doubtUnfinished(); };
    EXPECT_EQ(doubt(), (QStringList{"queued", "running", "given-up"}));
    EXPECT_EQ(doubt(), QStringList());
    EXPECT_TRUE(store->findId("given-up")->drive.isEmpty());
    for (const DocumentState state : states) {
        const StoredDocument document = store->findId(stateName(state)).value();
        SCOPED_TRACE(document.request.id.toStdString());
        const bool isUnfinished = state == DocumentState::Queued || state == DocumentState::Running;
        EXPECT_EQ(document.state, isUnfinished ? DocumentState::Unknown : state);
        // No drive is asked: what it counts is also what was forgotten.
        EXPECT_EQ(document.drive.isEmpty(), isUnfinished);
        if (!isUnfinished)
            continue;
        EXPECT_EQ(document.attempts.size(), 1);
        EXPECT_THROW(store->begin(document.request.id, {markBefore}), JournalError);
        // The number of another drive's document, perhaps.
        store->settle(
            document.request.id, 1, {.state = DocumentState::Issued, .documentNumber = 8, .by = "Anna"});
        EXPECT_EQ(store->findId(document.request.id)->state, DocumentState::Issued);
    }
}

TEST_P(StoreQueue, WhatWaitsForAnUnknownTimeIsOverWhenTheClockIsPutBack)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    for (const char* const id : {"begun", "asked"}) {
        DocumentRequest own = request(id);
        own.startBefore = now.addSecs(120);
        store->accept(own);
    }
    store->accept(request("patient"));
    EXPECT_EQ(expireAt(-50), QStringList()) << "a little does no harm";
    {
        const HostClock earlier(-7200);
        EXPECT_EQ(store->begin("begun", {markBefore}), std::nullopt);
    }
    EXPECT_EQ(expireAt(-7200), QStringList{"asked"});
    EXPECT_EQ(store->begin("patient", {markBefore}), 1);
}

TEST_P(StoreQueue, DocumentThatIsMadeAtOnceNeverWaits)
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

TEST_P(StoreQueue, WhatIsAcceptedMeetsItsCondition)
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

TEST_P(StoreQueue, OfReturnsAtOnceThatExceedTheirSaleTogetherOneIsAccepted)
{
    const auto receiptOf = [](const QByteArray& type) {
        return R"({"type": ")" + type + R"(", "taxationType": "osn", "operator": {"name": "Иванова"},
            "items": [{"name": "Хлеб", "price": 10, "quantity": 1, "amount": 10, "tax": {"type": "vat10"}}],
            "payments": [{"type": "cash", "sum": 10}]})";
    };
    for (int round = 0; round < 20; ++round) {
        const QString sale = QString::number(round);
        store->accept(request(sale, receiptOf("sell")));
        store->settle(sale, store->begin(sale, {markBefore}).value(), {.state = DocumentState::Issued});
        std::atomic_int accepted = 0;
        std::atomic_int number = 0;
        const auto giveBack = [&](DocumentStore& own) {
            const QString id = QString("%1-%2").arg(round).arg(++number);
            try {
                acceptReturn(own, {id, "sellReturn", receiptOf("sellReturn"), "till1", {}, {}, sale});
                ++accepted;
            } catch (const ReturnRefused&) {
            }
        };
        atOnce({giveBack, giveBack, giveBack});
        EXPECT_EQ(accepted, 1);
    }
}

INSTANTIATE_TEST_SUITE_P(BackEnds, StoreQueue, testing::ValuesIn(backEnds()),
    [](const auto& test) { return std::string(test.param.name); });

} // namespace
