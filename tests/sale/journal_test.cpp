// What the journal has of documents, and what becomes of those that were begun.

#include "documentanswer.h"
#include "journalfixture.h"
#include "movement.h"
#include "pendingsales.h"
#include "recordingdriver.h"
#include "review.h"
#include "reviewneeded.h"
#include "sqliteconnection.h"
#include "sqlitestore.h"
#include "wrongregister.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

const RegisterLine hexRegister{receipt::Protocol::Hex, true};

TEST_F(Journal, BrokenOffDocumentIsSettledOnItsOwnDrive)
{
    const std::tuple<DriveMark, int, std::string, DocumentState> rows[] = {
        {{noted.drive, 8}, 1, "ask registers next ask", DocumentState::Issued},
        {noted, 1, "ask registers next ask init registers next ask", DocumentState::NotIssued},
        {{noted.drive, 10}, 1, "ask registers next ask", DocumentState::Unknown},
        {{QStringLiteral("1111"), 8}, 0, "ask", DocumentState::Running},
    };
    BasicFrSettings settings;
    for (const auto& [now, settled, calls, verdict] : rows) {
        // Nobody has reached the register for long.
        for (const bool isGivenUp : {false, true}) {
            SqliteStore store(QStringLiteral(":memory:"));
            saleIn(store).begin(noted);
            if (isGivenUp)
                giveUpPendingSales(store, {}, {});
            const DocumentState state = isGivenUp && settled == 0 ? DocumentState::Unknown : verdict;
            RecordingDriver driver(&settings);
            driver.drive = now.drive;
            driver.numbers = {now.lastDocument};
            if (settled == 0) {
                RegisterLine known = hexRegister;
                known.drive = [&driver] { return driver.drive; };
                EXPECT_TRUE(settlePendingSales(driver, store, known).isEmpty());
                EXPECT_EQ(driver.calls, "") << "what stays open elsewhere costs nobody else a question";
            }
            EXPECT_EQ(settlePendingSales(driver, store, hexRegister).size(), settled);
            EXPECT_EQ(driver.calls, calls);
            EXPECT_EQ(saleIn(store).record()->state, state);
            EXPECT_TRUE(settlePendingSales(driver, store).isEmpty());
            if (settled != 0)
                continue;
            // Asked about alone: its own drive may still tell.
            EXPECT_THROW(
                settleDocument(driver, store, store.findId("A").value(), hexRegister), WrongRegister);
            EXPECT_EQ(saleIn(store).record()->state, state);
        }
    }
}

TEST_F(Journal, LaterDocumentIsNotTakenForOneThatIsUnknown)
{
    // The last one: otherwise nobody heard that it was begun.
    const std::tuple<const char*, DocumentState, DocumentState, bool> rows[] = {
        {"sell", DocumentState::Issued, DocumentState::Unknown, true},
        {"sell", DocumentState::Unknown, DocumentState::Unknown, true},
        {"sell", DocumentState::NotIssued, DocumentState::Issued, true},
        {"review", DocumentState::NotIssued, DocumentState::Unknown, true},
        {"sell", DocumentState::Issued, DocumentState::Unknown, false},
        {"sell", DocumentState::NotIssued, DocumentState::Issued, false},
    };
    BasicFrSettings settings;
    for (const auto& [kind, later, state, isSettled] : rows) {
        SqliteStore store(QStringLiteral(":memory:"));
        saleIn(store).begin(noted);
        if (isSettled)
            store.settle("A", 1, {});
        store.acceptAndBegin({"B", kind, {}, {}}, {noted.toJson()});
        store.settle("B", 1, {.state = later});
        RecordingDriver driver(&settings);
        driver.drive = noted.drive;
        driver.numbers = {noted.lastDocument + 1};
        if (isSettled)
            settleDocument(driver, store, store.findId("A").value(), hexRegister);
        else
            settlePendingSales(driver, store, hexRegister);
        EXPECT_EQ(store.findId("A")->state, state) << kind << isSettled;
    }
}

TEST_F(Journal, DocumentWithoutATraceIsNotAskedAbout)
{
    SqliteStore store(file);
    const DocumentRequest text{"T", "text", {}, "till1"};
    store.accept(text);
    store.begin("T", {});
    BasicFrSettings settings;
    RecordingDriver driver(&settings);
    settlePendingSales(driver, store, hexRegister, "till2");
    EXPECT_EQ(store.findId("T")->state, DocumentState::Running);
    settlePendingSales(driver, store, hexRegister, "till1");
    EXPECT_EQ(store.findId("T")->state, DocumentState::Unknown);
    EXPECT_EQ(driver.calls, "");
}

TEST_F(Journal, DamagedOneIsAFaultAndNothingIsMadeOfItsRest)
{
    BasicFrSettings settings;
    for (const char* const damage : {"DELETE FROM attempts WHERE id = 'B'",
             "DELETE FROM attempts WHERE number = 2", "UPDATE attempts SET number = 5 - number"}) {
        SCOPED_TRACE(damage);
        const QTemporaryDir place;
        SqliteStore store(place.filePath("sales.sqlite"));
        for (int attempt = 1; attempt <= 2; ++attempt) {
            store.acceptAndBegin({"B", "sell", {}, "till1"}, {noted.toJson()});
            if (attempt == 1)
                store.settle("B", 1, {.state = DocumentState::NotIssued});
        }
        SqliteConnection(store.place(), 1'000).execute(QString::fromLatin1(damage));
        RecordingDriver driver(&settings);
        driver.drive = noted.drive;
        driver.numbers = {noted.lastDocument};
        settlePendingSales(driver, store, hexRegister);
        EXPECT_EQ(store.findId("B")->state, DocumentState::Unknown) << "and not sold again";
        EXPECT_THROW(lastKnownMark(store, "till1"), JournalError);
        try {
            requireKnown(driver, store, noted);
            ADD_FAILURE() << "known";
        } catch (const JournalError& fault) {
            EXPECT_STREQ(fault.what(), "the journal is damaged: attempt 2 at the document B is not there");
        }
    }
}

TEST_F(Journal, DocumentsThatItDoesNotKnowAreForAPerson)
{
    const auto behind = [](quint32 number, std::optional<qint64> next = {}) {
        return DriveMark{.drive = noted.drive, .lastDocument = number, .shift = 3, .nextReceipt = next};
    };
    struct Row
    {
        const char* name;
        /// The document before, if any, and what is known behind it.
        std::optional<DocumentKind> kind;
        Verdict verdict;
        std::optional<DriveMark> after;
        DriveMark now;
        bool isReview;
        bool isAsked = false;
        /// Behind that document, which does not hide it.
        bool hasCash = false;
        /// Counted on for the mark before the next document.
        quint32 number = 0;
    };
    using enum DocumentKind;
    DriveMark afterCash = behind(8, 5);
    afterCash.drawer = 70;
    const Row rows[] = {
        {"new journal, new register", {}, {}, {}, behind(2), false},
        {"new journal", {}, {}, {}, behind(3), true},
        {"new journal over HEX", {}, {}, {}, behind(0, 2), true, true},
        {"nothing else happened", Sale, {Outcome::Issued, 8}, {}, behind(8), false},
        {"one more", Sale, {Outcome::Issued, 8}, {}, behind(9), true},
        {"not issued", Sale, Outcome::NotIssued, {}, behind(8), true},
        {"issued twice", Report, {Outcome::Issued, 9}, {}, behind(9), false},
        {"nobody knows", Sale, Outcome::Unknown, {}, behind(8), false},
        {"nobody knows, and one more", Sale, Outcome::Unknown, {}, behind(9), true},
        {"cash", Sale, {Outcome::Issued, 8}, {}, behind(8), false, false, true},
        {"one more before cash", Sale, {Outcome::Issued, 8}, {}, behind(9), true, false, true},
        {"a shift was opened", ShiftClosing, {Outcome::Issued, 8}, {}, behind(9), false},
        {"and something was sold", ShiftClosing, {Outcome::Issued, 8}, {}, behind(10), true},
        {"receipts alone are told", Sale, {Outcome::Issued, 0}, behind(0, 5), behind(0, 5), false},
        {"one more receipt", Sale, {Outcome::Issued, 0}, behind(0, 5), behind(0, 6), true},
        {"one more receipt before cash", Sale, {Outcome::Issued, 0}, behind(0, 5), behind(0, 6), true, false,
            true},
        {"no receipt since", Sale, {Outcome::Issued, 8}, behind(8, 5), behind(0, 5), false, false, false, 8},
        {"no receipt since, but other cash", Sale, {Outcome::Issued, 8}, afterCash, behind(0, 5), false,
            true},
        {"another drive", Sale, {Outcome::Issued, 8}, {}, {"1111", 2}, false},
    };
    BasicFrSettings settings;
    for (const Row& row : rows) {
        SqliteStore store(QStringLiteral(":memory:"));
        RecordingDriver driver(&settings);
        if (row.kind) {
            IdentifiedSale sale(store, {"A", documentKindName(*row.kind), "{}", "till1"});
            sale.begin(noted, {}, {*row.kind});
            sale.settle(row.verdict, row.after);
        }
        if (row.hasCash) {
            const DriveMark told{.drive = noted.drive, .drawer = 100};
            IdentifiedSale cash(store, {"C", "cashIn", "{}", "till1"});
            cash.begin(told, {}, {CashIn});
            cash.settle(Outcome::Issued, told);
        }
        DriveMark mark;
        const auto isReview = [&] {
            try {
                mark = requireKnown(driver, store, row.now);
                return false;
            } catch (const ReviewNeeded&) {
                return true;
            }
        };
        EXPECT_EQ(isReview(), row.isReview) << row.name;
        EXPECT_TRUE(row.number == 0 || (mark.lastDocument == row.number && !mark.isNumberRead)) << row.name;
        EXPECT_EQ(driver.calls, row.isAsked ? "ask" : "") << row.name;
        acceptUnknown(store, "till1", row.now, "anna", "none of ours");
        EXPECT_FALSE(isReview()) << row.name;
    }
}

TEST(DocumentAnswer, ShiftIsThatOfTheReceiptWhateverProtocolAsksNow)
{
    DriveMark hex = noted;
    hex.shift = 3;
    hex.nextReceipt = 5;
    StoredAttempt attempt;
    attempt.start = {hex.toJson(), Movement{DocumentKind::Sale}.toJson()};
    StoredDocument document;
    document.state = DocumentState::Issued;
    document.attempts = {attempt};
    for (const receipt::Protocol protocol : {receipt::Protocol::Hex, receipt::Protocol::Xml})
        EXPECT_EQ(answerOf(document, protocol).shift, 2);
}

TEST(DocumentAnswer, WhatMayBeIssuedIsNotToBeRepeated)
{
    DocumentAnswer answer;
    const auto actionOf = [&answer](DocumentState state, ErrorKind kind) {
        answer.error = AnswerError{kind};
        answer.state = state;
        return answer.toJson().value("error").toObject().value("action").toString();
    };
    for (int kind = 0; kind <= static_cast<int>(ErrorKind::Other); ++kind) {
        for (const DocumentState state : {DocumentState::Issued, DocumentState::Unknown})
            EXPECT_FALSE(
                actionOf(state, static_cast<ErrorKind>(kind)).contains(QStringLiteral(" повторите")));
    }
    EXPECT_TRUE(
        actionOf(DocumentState::NotIssued, ErrorKind::Line).contains(QStringLiteral("повторите тот же")));
}

} // namespace
