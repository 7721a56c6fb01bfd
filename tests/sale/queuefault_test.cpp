// Documents that wait: what refuses one, and what holds it up.

#include "queuefixture.h"

using namespace sale;

namespace {

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
        const char* unfit = "";
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
        // These were begun.
        {"its opening", "sell", receiptJson, {}, paper, "open"},
        {"copy of what the drive has not", "copy", R"({"documentNumber": 41})", {}, ErrorKind::Data, "", true,
            true, 1, "copy41"},
    };
    driver.markResult = 5;
    driver.unfitText = QStringLiteral("Нет запрошенных данных в ФН");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        driver.shiftOpen = row.isShiftOpen;
        driver.refused = row.refused;
        driver.unfit = row.unfit;
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

TEST_F(Queue, ShiftThatIsTooOldIsWaitedForWhereSomebodyClosesIt)
{
    driver.unfit = "sums";
    driver.unfitText = QStringLiteral("Текущая смена больше 24 часов");
    for (const bool closesShift : {true, false}) {
        journal = std::make_unique<SqliteStore>(QStringLiteral(":memory:"));
        accept("sell", receiptJson);
        DeskOptions ours = options();
        ours.closesShift = closesShift;
        CashDesk desk(driver, *journal, ours);
        const QueuedDocument document = makeQueued(desk, queuedId);
        EXPECT_EQ(document.held, closesShift ? std::optional(ErrorKind::ShiftExpired) : std::nullopt);
        EXPECT_EQ(document.answer.error.value().kind, ErrorKind::ShiftExpired);
        EXPECT_EQ(
            journal->findId(queuedId)->state, closesShift ? DocumentState::Queued : DocumentState::NotIssued);
    }
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

} // namespace
