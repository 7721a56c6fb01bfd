// Documents that wait in the journal, on their way to the register.

#include "cashdesk.h"
#include "currenttime.h"
#include "dyingstore.h"
#include "mockfactory.h"
#include "queueddocument.h"
#include "recordingdriver.h"
#include "sqlitestore.h"

#include <gtest/gtest.h>

#include <memory>

using namespace sale;

namespace {

const QString queuedId = QStringLiteral("shop-0001");
const QByteArray receiptJson = R"({"type": "sell", "taxationType": "osn", "operator": {"name": "Иванова"},
    "items": [{"name": "Хлеб", "price": 10, "quantity": 2, "amount": 20, "tax": {"type": "vat10"}}],
    "payments": [{"type": "cash", "sum": 30}]})";
const QByteArray marked
    = QByteArray(receiptJson)
          .replace("\"price\": 10, \"quantity\": 2, \"amount\": 20",
              "\"price\": 20, \"quantity\": 1, \"amount\": 20, \"markingCode\": {\"type\": \"other\", "
              "\"mark\": \"010460043993125621JgXJ5.T\"}");

class Queue : public testing::Test
{
protected:
    Queue()
    {
        driver.payments = {{0, 20.0}};
        driver.numbers = {1};
    }

    DeskOptions options(bool opensShift = true) const
    {
        DeskOptions made{{receipt::Protocol::Hex, true}, "till1", {"Иванова", {}, {}}};
        made.opensShift = opensShift;
        made.markPolicy = MarkPolicy::Strict;
        return made;
    }
    void accept(const QString& kind, const QByteArray& body)
    {
        journal->accept({queuedId, kind, body, "till1"});
    }
    QueuedDocument made(bool opensShift = true)
    {
        CashDesk desk(driver, *journal, options(opensShift));
        return makeQueued(desk, queuedId);
    }
    std::string told() { return std::exchange(driver.calls, {}); }

    BasicFrSettings settings;
    RecordingDriver driver{&settings};
    std::unique_ptr<SqliteStore> journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
};

TEST_F(Queue, ReceiptIsMadeOnce)
{
    accept("sell", receiptJson);
    CashDesk desk(driver, *journal, options());
    const QueuedDocument first = makeQueued(desk, queuedId);
    EXPECT_FALSE(first.held);
    EXPECT_EQ(first.answer.state, DocumentState::Issued);
    EXPECT_FALSE(first.answer.isReplayed);
    EXPECT_EQ(first.answer.documentNumber, 2U);
    EXPECT_EQ(first.answer.total, 2000);
    EXPECT_EQ(first.answer.change, 1000);
    EXPECT_EQ(first.answer.items.size(), 1);
    EXPECT_EQ(first.answer.attempts.size(), 1);
    EXPECT_FALSE(first.answer.error);
    EXPECT_EQ(told().substr(0, 12), "connect init");
    const QueuedDocument second = makeQueued(desk, queuedId);
    EXPECT_EQ(second.answer.state, DocumentState::Issued);
    EXPECT_TRUE(second.answer.isReplayed);
    EXPECT_FALSE(second.held);
    EXPECT_EQ(told(), "");
}

TEST_F(Queue, EachKindIsMadeByItsBody)
{
    const struct
    {
        const char* kind;
        QByteArray body;
        /// Among what the register is asked.
        std::string call;
        bool isShiftOpen = true;
    } rows[] = {
        {"cashIn", R"({"type": "cashIn", "sum": 12.5})", "cashIn sum12.5"},
        {"cashOut", R"({"type": "cashOut", "sum": 3})", "cashOut sum3"},
        {"openShift", R"({"type": "openShift"})", "openShift", false},
        {"zReport", R"({"type": "zReport"})", "zReport"},
        {"xReport", R"({"type": "xReport"})", "xReport"},
        {"accountingReport", R"({"type": "accountingReport"})", "accounting"},
        {"text", R"({"type": "text", "lines": ["one", "", "two"]})", "text:one||two"},
        {"copy", R"({"type": "copy", "documentNumber": 41})", "copy41"},
        {"copy", R"({"type": "copy"})", "copy1"},
    };
    for (const auto& row : rows) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = row.isShiftOpen;
        told();
        accept(row.kind, row.body);
        const QueuedDocument document = made();
        EXPECT_EQ(document.answer.state, DocumentState::Issued) << row.body.toStdString();
        const std::string calls = told();
        EXPECT_TRUE(calls.find(row.call) < calls.npos) << calls;
        EXPECT_EQ(journal->findId(queuedId)->state, DocumentState::Issued);
    }
}

TEST_F(Queue, FaultOfTheDocumentRefusesItAndAnyOtherHoldsIt)
{
    struct Row
    {
        const char* name;
        const char* kind;
        QByteArray body;
        std::optional<ErrorKind> held;
        ErrorKind error;
        const char* refused = "";
        bool isShiftOpen = true;
        bool opensShift = true;
        int attempts = 1;
    };
    constexpr auto paper = ErrorKind::Paper;
    const QByteArray z = R"({"type": "zReport"})";
    const Row rows[] = {
        {"no JSON", "sell", "{", {}, ErrorKind::Data},
        {"wrong sum", "sell", QByteArray(receiptJson).replace("20,", "21,"), {}, ErrorKind::Data},
        {"bad mark", "sell", marked, {}, ErrorKind::Mark},
        {"no sum", "cashIn", R"({"type": "cashIn"})", {}, ErrorKind::Data},
        {"no lines", "text", R"({"type": "text", "lines": [1]})", {}, ErrorKind::Data},
        {"bad number", "copy", R"({"type": "copy", "documentNumber": 1.5})", {}, ErrorKind::Data},
        {"not for a queue", "review", "{}", {}, ErrorKind::Data},
        {"shift is open", "openShift", R"({"type": "openShift"})", {}, ErrorKind::Other},
        {"shift is closed", "zReport", z, {}, ErrorKind::Other, "", false},
        {"may not open it", "sell", receiptJson, {}, ErrorKind::ShiftClosed, "", false, false},
        {"may not open it for cash", "cashIn", R"({"sum": 1})", {}, ErrorKind::ShiftClosed, "", false, false},
        {"not reached", "sell", receiptJson, paper, paper, "connect", true, true, 0},
        {"not initialised", "zReport", z, paper, paper, "init", true, true, 0},
        {"before the document", "sell", receiptJson, paper, paper, "sums", true, true, 0},
        {"opening the shift", "sell", receiptJson, paper, paper, "openShift", false, true, 0},
        // This one was begun.
        {"its opening", "sell", receiptJson, {}, paper, "open"},
    };
    driver.markResult = 5;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = row.isShiftOpen;
        driver.refused = row.refused;
        accept(row.kind, row.body);
        told();
        const QueuedDocument document = made(row.opensShift);
        EXPECT_EQ(document.held, row.held);
        ASSERT_TRUE(document.answer.error);
        EXPECT_EQ(document.answer.error->kind, row.error) << document.answer.error->text.toStdString();
        const StoredDocument stored = journal->findId(queuedId).value();
        EXPECT_EQ(document.answer.state, stored.state);
        EXPECT_EQ(stored.state, row.held ? DocumentState::Queued : DocumentState::NotIssued);
        EXPECT_EQ(stored.reason, row.held ? StateReason::None : StateReason::Refused);
        ASSERT_EQ(stored.attempts.size(), row.attempts);
        if (row.attempts > 0) {
            EXPECT_EQ(stored.attempts.constLast().note.failure.value("text"), document.answer.error->text);
        }
        EXPECT_EQ(told().find(" close"), std::string::npos);
    }
}

TEST_F(Queue, RefusedXReportIsKnownNotToBeMadeWhereTheShiftIsClosed)
{
    for (const bool isOpen : {false, true}) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = isOpen;
        driver.refused = "xReport";
        accept("xReport", R"({"type": "xReport"})");
        const QueuedDocument document = made();
        EXPECT_FALSE(document.held);
        EXPECT_EQ(document.answer.state, isOpen ? DocumentState::Unknown : DocumentState::NotIssued);
        EXPECT_EQ(document.answer.reason, isOpen ? StateReason::None : StateReason::Refused);
        ASSERT_TRUE(document.answer.error);
        EXPECT_EQ(document.answer.error->kind, isOpen ? ErrorKind::Paper : ErrorKind::ShiftClosed);
        const std::string calls = told();
        EXPECT_TRUE(calls.ends_with("xReport shift")) << calls;
    }
}

TEST_F(Queue, WhatIsOneRequestThatTheRegisterCannotDoIsKnownNotToBeMade)
{
    constexpr auto hex = receipt::Protocol::Hex;
    constexpr auto xml = receipt::Protocol::Xml;
    constexpr auto none = DocumentState::NotIssued;
    const char* const impossible = "Функция невыполнима при данном статусе ККТ";
    const char* const unexpected = "Внутренняя ошибка. Получена непредвиденная команда";
    const QByteArray copy = R"({"documentNumber": 41})";
    const struct
    {
        receipt::Protocol protocol;
        const char* kind;
        QByteArray body;
        const char* call;
        const char* text;
        DocumentState state;
        ErrorKind error;
        bool isShiftOpen = true;
        bool isSentAgain = false;
    } rows[] = {
        {hex, "copy", copy, "copy41", "Нет запрошенных данных в ФН", none, ErrorKind::Data},
        {xml, "copy", "{}", "last", "Внутренняя ошибка. Отсутствует документ для повторной печати", none,
            ErrorKind::Data},
        // Switched off and on since it was opened.
        {hex, "copy", copy, "copy41", impossible, none, ErrorKind::Other},
        {hex, "copy", "{}", "copy1", impossible, none, ErrorKind::Other},
        {hex, "xReport", "{}", "xReport", impossible, none, ErrorKind::Other},
        {xml, "xReport", "{}", "xReport", unexpected, none, ErrorKind::ShiftClosed, false},
        {xml, "xReport", "{}", "xReport", "Ошибка обмена данными", DocumentState::Unknown, ErrorKind::Line,
            false},
        {xml, "copy", copy, "copy41", unexpected, none, ErrorKind::Other},
        {xml, "copy", copy, "copy41", unexpected, DocumentState::Unknown, ErrorKind::Other, true, true},
        {hex, "copy", copy, "copy41", "Неизвестная ошибка", DocumentState::Unknown, ErrorKind::Other},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.call) + ' ' + row.text);
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = row.isShiftOpen;
        driver.unfit = row.call;
        driver.unfitText = QString::fromUtf8(row.text);
        accept(row.kind, row.body);
        DeskOptions ours = options();
        ours.line.protocol = row.protocol;
        quint64 repeats = 0;
        ours.line.repeats = [&] { return row.isSentAgain ? ++repeats : 0; };
        CashDesk desk(driver, *journal, ours);
        const QueuedDocument document = makeQueued(desk, queuedId);
        EXPECT_EQ(document.answer.state, row.state);
        ASSERT_TRUE(document.answer.error);
        EXPECT_EQ(document.answer.error->kind, row.error);
    }
}

TEST_F(Queue, RegisterThatWasSwitchedOffAndOnSinceItWasOpenedIsNotTheFaultOfADocument)
{
    driver.unfit = "sums";
    accept("sell", receiptJson);
    CashDesk desk(driver, *journal, options());
    desk.open();
    EXPECT_EQ(makeQueued(desk, queuedId, true).held, ErrorKind::Other);
    EXPECT_FALSE(desk.isOpen());
    // Behind another start it is what the register says of the document.
    EXPECT_EQ(makeQueued(desk, queuedId).answer.reason, StateReason::Refused);
}

TEST_F(Queue, AnotherDriveThanTheOneThatIsMeantGetsNothing)
{
    QString meant = driver.drive;
    for (const auto protocol : {receipt::Protocol::Hex, receipt::Protocol::Xml}) {
        for (const bool isShiftOpen : {true, false}) {
            journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
            DeskOptions ours = options();
            ours.line.protocol = protocol;
            ours.line.drive = [&meant] { return meant; };
            CashDesk desk(driver, *journal, ours);
            desk.open();
            driver.drive = "9999000000000002";
            driver.shiftOpen = isShiftOpen;
            accept("sell", receiptJson);
            told();
            EXPECT_EQ(makeQueued(desk, queuedId, true).held, ErrorKind::WrongRegister);
            const std::string calls = told();
            EXPECT_EQ(calls.find("open"), calls.npos) << calls;
            meant = driver.drive;
            driver.numbers = {1};
            EXPECT_EQ(makeQueued(desk, queuedId).answer.state, DocumentState::Issued);
            meant = driver.drive = "9999";
        }
    }
}

TEST_F(Queue, UnknownDocumentsHoldUpWhatWaits)
{
    driver.numbers = {7};
    accept("sell", receiptJson);
    const QueuedDocument document = made();
    EXPECT_EQ(document.held, ErrorKind::Other);
    EXPECT_TRUE(document.answer.error->toJson().value("needsReview").toBool());
}

TEST_F(Queue, WhatIsTakenAwayInTheMeantimeIsNotBegun)
{
    const struct
    {
        void (*work)(DocumentStore& store);
        DocumentState state;
        StateReason reason;
    } rows[] = {
        {[](DocumentStore& store) { store.withdraw(queuedId); }, DocumentState::NotIssued,
            StateReason::Deleted},
        {[](DocumentStore& store) { store.move(queuedId, "till2"); }, DocumentState::Queued,
            StateReason::None},
        {[](DocumentStore& store) { store.expire(QDateTime::currentDateTime().addSecs(60)); },
            DocumentState::NotIssued, StateReason::Expired},
        // Another program, on another register, comes first.
        {[](DocumentStore& store) {
             store.settle(queuedId, store.begin(queuedId, {{{"drive", "1111"}}}).value(),
                 {.state = DocumentState::Issued, .documentNumber = 5});
         },
            DocumentState::Issued, StateReason::None},
    };
    for (const auto& row : rows) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        journal->accept({queuedId, "sell", marked, "till1", {}, QDateTime::currentDateTime().addSecs(30)});
        told();
        driver.onMark = [&] { row.work(*journal); };
        const QueuedDocument document = made();
        EXPECT_FALSE(document.held);
        EXPECT_FALSE(document.answer.error);
        EXPECT_EQ(document.answer.state, row.state);
        EXPECT_EQ(document.answer.reason, row.reason);
        const std::string calls = told();
        EXPECT_TRUE(calls.ends_with("mark clear")) << calls;
        // Asked for once more it is answered as it stands, and the register is left alone.
        EXPECT_EQ(made().answer.state, row.state);
        EXPECT_EQ(told(), "");
    }
}

class LaterClock : public CurrentTime
{
public:
    QDateTime getCurrentDateTime() const override { return CurrentTime::getCurrentDateTime().addSecs(60); }
};

TEST_F(Queue, WhatIsTooLateWhenItsMarkIsTakenExpires)
{
    journal->accept({queuedId, "sell", marked, "till1", {}, QDateTime::currentDateTime().addSecs(30)});
    LaterClock later;
    driver.onMark = [&] { MockFactory<CurrentTime>::mocked = &later; };
    const QueuedDocument document = made();
    MockFactory<CurrentTime>::mocked = nullptr;
    EXPECT_FALSE(document.held);
    EXPECT_EQ(document.answer.state, DocumentState::NotIssued);
    EXPECT_EQ(document.answer.reason, StateReason::Expired);
    EXPECT_EQ(document.answer.error->exceptionName, "DocumentExpired");
    EXPECT_TRUE(driver.calls.ends_with("mark clear")) << driver.calls;
}

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
    const struct
    {
        bool isShiftOpen;
        const char* refused;
        DocumentState state;
    } rows[] = {
        {true, "", DocumentState::Issued},
        // Ahead of it another document opens the shift.
        {false, "", DocumentState::Issued},
        {true, "total", DocumentState::NotIssued},
    };
    for (const auto& row : rows) {
        int place = 1;
        do {
            SCOPED_TRACE(place);
            journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
            accept("sell", receiptJson);
            numbering.shiftOpen = row.isShiftOpen;
            numbering.numbers = {1};
            numbering.refused = row.refused;
            numbering.calls.clear();
            const std::string before = killedAt((place + 1) / 2, place % 2 == 1);
            CashDesk next(numbering, *journal, options());
            next.open();
            const DocumentState known = journal->findId(queuedId)->state;
            EXPECT_EQ(known == DocumentState::Issued, isAsked(before, "close") == 1);
            EXPECT_NE(known, DocumentState::Running);
            EXPECT_NE(known, DocumentState::Unknown);
            const DocumentState answered = makeQueued(next, queuedId).answer.state.value();
            EXPECT_EQ(answered, known == DocumentState::Queued ? row.state : known);
            EXPECT_LE(isAsked(before, "close") + isAsked(numbering.calls, "close"), 1U);
            ++place;
        } while (isKilled);
        // Beginning and settling at least.
        EXPECT_GT(place, 4);
    }
}

TEST_F(Queue, WhatIsNotThereIsTold)
{
    const QueuedDocument document = made();
    EXPECT_EQ(document.answer.state, std::nullopt);
    EXPECT_EQ(document.answer.error->exceptionName, "JournalError");
    EXPECT_EQ(driver.calls, "");
}

} // namespace
