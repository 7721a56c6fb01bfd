// Documents that wait, and a program that is killed with one.

#include "journalerror.h"
#include "queuefixture.h"

#include <type_traits>

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

/// The journal of a program that is killed at a writing, before it or behind it.
class DyingStore : public DocumentStore
{
public:
    DyingStore(DocumentStore& kept, int writing, bool isBefore, bool& isDead)
        : m_kept(kept)
        , m_left(writing)
        , m_isBefore(isBefore)
        , m_isDead(isDead)
    {
    }

    using DocumentStore::accept;
    StoredDocument accept(const DocumentRequest& request, const Condition& condition) override
    {
        return write([&] { return m_kept.accept(request, condition); });
    }
    std::optional<int> begin(const QString& document, const AttemptStart& start) override
    {
        return write([&] { return m_kept.begin(document, start); });
    }
    std::optional<int> acceptAndBegin(const DocumentRequest& request, const AttemptStart& start) override
    {
        return write([&] { return m_kept.acceptAndBegin(request, start); });
    }
    void note(const QString& document, int attempt, const AttemptNote& note) override
    {
        write([&] { return m_kept.note(document, attempt, note), 0; });
    }
    void settle(const QString& document, int attempt, const DocumentEnding& ending) override
    {
        write([&] { return m_kept.settle(document, attempt, ending), 0; });
    }
    QList<StoredDocument> find(const DocumentQuery& query) const override
    {
        requireAlive();
        return m_kept.find(query);
    }
    QDateTime timeNow() const override { return m_kept.timeNow(); }
    StoredDocument withdraw(const QString& document) override { return m_kept.withdraw(document); }
    StoredDocument move(const QString& document, const QString& till) override
    {
        return m_kept.move(document, till);
    }
    StoredDocument refuse(const QString& document, const AttemptNote& note) override
    {
        return write([&] { return m_kept.refuse(document, note); });
    }
    QStringList expire() override { return m_kept.expire(); }

private:
    template <typename Work>
    std::invoke_result_t<Work> write(const Work& work)
    {
        const bool isLast = --m_left == 0;
        m_isDead = m_isDead || (isLast && m_isBefore);
        requireAlive();
        const auto result = work();
        m_isDead = m_isDead || isLast;
        requireAlive();
        return result;
    }
    void requireAlive() const
    {
        if (m_isDead)
            throw JournalError(QStringLiteral("killed"));
    }

    DocumentStore& m_kept;
    int m_left;
    const bool m_isBefore;
    bool& m_isDead;
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
