// The journal that the service stands on: it fails, moves, and is written by others.

#include "api/journalproblem.h"
#include "apirig.h"

namespace {

using JournalTest = ApiTest;

QStringList written;

TEST(JournalProblem, IsWrittenDownOnceHoweverOftenItIsMet)
{
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& line) { written.append(line); });
    for (const char* const fault : {"disk 1", "disk 1", "disk 1", "disk 2", "disk 2"})
        EXPECT_EQ(frserver::journalProblem(sale::JournalError(QString::fromLatin1(fault))).status, 503);
    qInstallMessageHandler(before);
    EXPECT_EQ(written, (QStringList{"disk 1", "disk 2"}));
}

TEST_F(JournalTest, LosesNobodyWhileTheJournalFails)
{
    const Served first = post("document:1", cashIn, "wait=30");
    const Served second = post("document:2", cashIn, "wait=30");
    store.begin("document:1", {.markBefore = {}});
    store.settle("document:1", 1, {.state = sale::DocumentState::Issued});
    store.isBroken = true;
    // Whoever tells of it does not hear of the journal.
    api.documentChanged("document:1");
    second.pending->leave();
    EXPECT_EQ(till1.told.last(), "document:2 not awaited");
    EXPECT_EQ(first.later().status, 0);
    store.isBroken = false;
    api.documentChanged("document:1");
    EXPECT_EQ(first.later().status, 201);
    const Served third = post("document:2", cashIn, "wait=30");
    store.isBroken = true;
    api.stop();
    EXPECT_EQ(third.later().status, 503);
}

TEST_F(JournalTest, WhatOthersHaveMadeMeanwhileIsSeenWhenTheRegisterIsReached)
{
    const auto turn = [this](const char* state) {
        till1.state = state;
        api.registerChanged("till1");
        return ask("GET", "/v1/registers/till1").json().value("queue").toObject().value("queued").toInt();
    };
    const Served waiting = post("document:1", cashIn, "wait=30");
    post("document:2", cashIn);
    turn("paused");
    store.begin("document:1", {.markBefore = {}});
    store.settle("document:1", 1, {.state = sale::DocumentState::Issued});
    EXPECT_EQ(turn("starting"), 2);
    EXPECT_EQ(turn("making"), 1);
    EXPECT_EQ(waiting.later().status, 201);
}

} // namespace
