// Documents that wait, and a program that is killed with one.

#include "dyingstore.h"
#include "queuefixture.h"

using namespace sale;

namespace {

TEST_F(Queue, WhatWasBrokenOffIsSettledByTheNextStart)
{
    accept("sell", receiptJson);
    driver.failing = "close";
    driver.interrupt = true;
    const QueuedDocument broken = made();
    EXPECT_FALSE(broken.held) << "it may have been issued";
    EXPECT_EQ(broken.answer.state, DocumentState::Running);
    driver.failing.clear();
    told();
    EXPECT_EQ(made().answer.state, DocumentState::Running);
    EXPECT_EQ(told(), "");
    driver.numbers = {2};
    CashDesk desk(driver, *journal, options());
    EXPECT_EQ(desk.open().size(), 1);
    EXPECT_EQ(makeQueued(desk, queuedId).answer.state, DocumentState::Issued);
}

/// Whether the register was asked for it, once.
quint32 isAsked(const std::string& calls, const std::string& call)
{
    return (" " + calls + " ").find(" " + call + " ") < calls.npos ? 1 : 0;
}

/// Its drive numbers what it makes.
class NumberingDriver : public RecordingDriver
{
public:
    using RecordingDriver::RecordingDriver;

    void openShift() override
    {
        RecordingDriver::openShift();
        numbers = {numbers.constLast() + 1};
    }
    QJsonObject checkClose(const FiscalDocument& document) override
    {
        const QJsonObject told = RecordingDriver::checkClose(document);
        numbers = {numbers.constLast() + 1};
        return told;
    }
};

class KilledQueue : public Queue
{
protected:
    KilledQueue() { numbering.payments = driver.payments; }

    /// What the program had asked for when it was killed, or came to its end.
    std::string killedAt(int writing, bool isBefore)
    {
        DyingStore dying(*journal, writing, isBefore, numbering.isHostDead);
        CashDesk desk(numbering, dying, options());
        makeQueued(desk, queuedId);
        isKilled = std::exchange(numbering.isHostDead, false);
        return std::exchange(numbering.calls, {});
    }

    NumberingDriver numbering{&settings};
    bool isKilled = false;
};

TEST_F(KilledQueue, IssuesOnceAndTellsTheTruth)
{
    const std::tuple<bool, const char*, DocumentState> rows[] = {
        {true, "", DocumentState::Issued},
        // Ahead of it another document opens the shift.
        {false, "", DocumentState::Issued},
        {true, "total", DocumentState::NotIssued},
    };
    for (const auto& [isShiftOpen, refused, state] : rows) {
        int place = 1;
        do {
            SCOPED_TRACE(place);
            journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
            accept("sell", receiptJson);
            numbering.shiftOpen = isShiftOpen;
            numbering.numbers = {1};
            numbering.refused = refused;
            numbering.calls.clear();
            const std::string before = killedAt((place + 1) / 2, place % 2 == 1);
            CashDesk next(numbering, *journal, options());
            next.open();
            const DocumentState known = journal->findId(queuedId)->state;
            EXPECT_EQ(known == DocumentState::Issued, isAsked(before, "close") == 1);
            EXPECT_NE(known, DocumentState::Running);
            EXPECT_NE(known, DocumentState::Unknown);
            const DocumentState answered = makeQueued(next, queuedId).answer.state.value();
            EXPECT_EQ(answered, known == DocumentState::Queued ? state : known);
            EXPECT_LE(isAsked(before, "close") + isAsked(numbering.calls, "close"), 1U);
            ++place;
        } while (isKilled);
        // Beginning and settling at least.
        EXPECT_GT(place, 4);
    }
}

} // namespace
