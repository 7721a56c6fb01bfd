#include "drivemark.h"
#include "movement.h"
#include "receipt.h"

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

} // namespace
