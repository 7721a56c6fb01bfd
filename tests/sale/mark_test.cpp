#include "drivemark.h"
#include "marknoting.h"
#include "movement.h"
#include "receipt.h"
#include "recordingdriver.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

TEST(DriveMark, ComesBackFromJsonAsItWas)
{
    DriveMark full{QStringLiteral("9999"), 8, false, false, 3, 12};
    full.sums = {{DocumentKind::Sale, {{0, 910}, {4, 1}}}, {DocumentKind::SaleReturn, {}}};
    full.cash = {{DocumentKind::CashOut, {2, 20'000'000'000}}};
    full.drawer = 0;
    DriveMark open{QStringLiteral("9999")};
    open.isShiftOpen = true;
    for (const DriveMark& mark : {full, open, DriveMark()})
        EXPECT_EQ(DriveMark::fromJson(mark.toJson()), mark);
    // What is not told has no field, so that nobody takes it for zero.
    EXPECT_EQ(open.toJson().keys(), (QStringList{"drive", "shiftOpen"}));
}

TEST(Movement, IsWhatTheReceiptAddsToTheCounters)
{
    receipt::Receipt receipt;
    receipt.payments = {{0, 7}, {1, 1.1}, {0, 3}};
    receipt.total = 910;
    receipt.paid = 1110;
    const Movement sale = movementOf(receipt);
    EXPECT_EQ(sale, (Movement{DocumentKind::Sale, {{0, 800}, {1, 110}}}));
    receipt.document.setDocumentType(hw::fr::CheckSaleReturn);
    EXPECT_EQ(movementOf(receipt).kind, DocumentKind::SaleReturn);
    for (const Movement& movement : {sale, Movement{DocumentKind::CashOut, {}, 500}})
        EXPECT_EQ(Movement::fromJson(movement.toJson()), movement);
}

constexpr auto hexProtocol = receipt::Protocol::Hex;
constexpr auto xmlProtocol = receipt::Protocol::Xml;

TEST(NoteMark, AsksWhatTheProtocolTellsOfTheDocument)
{
    const std::tuple<receipt::Protocol, DocumentKind, QList<quint32>, quint32, const char*> rows[] = {
        {hexProtocol, DocumentKind::Sale, {7, 8}, 0, "registers next sums"},
        {xmlProtocol, DocumentKind::Sale, {7, 8}, 7, "ask sums"},
        {xmlProtocol, DocumentKind::Sale, {0, 8}, 8, "ask sums ask sums"},
        {xmlProtocol, DocumentKind::OtherReceipt, {7}, 7, "ask"},
        {hexProtocol, DocumentKind::CashIn, {7}, 0, "registers cash"},
        {xmlProtocol, DocumentKind::CashOut, {7}, 0, "registers cash"},
        {hexProtocol, DocumentKind::Report, {7, 8}, 7, "ask"},
        {xmlProtocol, DocumentKind::Report, {7, 7, 8}, 7, "ask ask"},
        {xmlProtocol, DocumentKind::ShiftClosing, {1, 7, 2, 7, 7}, 7, "ask ask ask ask ask"},
    };
    BasicFrSettings settings;
    for (const auto& [protocol, kind, numbers, number, calls] : rows) {
        RecordingDriver driver(&settings);
        driver.numbers = numbers;
        const DriveMark mark = noteMark(driver, protocol, kind);
        EXPECT_EQ(mark.lastDocument, number) << calls;
        EXPECT_EQ(mark.drive, driver.drive);
        EXPECT_EQ(driver.calls, calls);
    }
    // Readings that never agree tell nothing.
    RecordingDriver driver(&settings);
    for (quint32 number = 1; number < 100; ++number)
        driver.numbers.append(number);
    EXPECT_EQ(noteMarkAfterFailure(driver, {}, DocumentKind::Sale), DriveMark());
}

} // namespace
