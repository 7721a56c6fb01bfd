// The table of verdicts, a row each.

#include "drivemark.h"
#include "movement.h"
#include "verdicttable.h"

#include <gtest/gtest.h>

using namespace sale;

namespace {

constexpr auto sell = DocumentKind::Sale;
constexpr auto cashIn = DocumentKind::CashIn;

/// A register over XML, where 100.00 were sold for cash before.
DriveMark xml(quint32 number, const std::optional<PaymentSums>& sums = PaymentSums{{0, 10000}})
{
    DriveMark mark{QStringLiteral("9999"), number};
    // Counters of a closed shift read empty, which is not zero.
    mark.isShiftOpen = sums.has_value();
    if (sums)
        mark.sums = {{sell, *sums}};
    return mark;
}

/// The same over HEX: before, the number of the drive's last document is not asked for.
DriveMark hex(qint64 nextReceipt, const PaymentSums& sums = {{0, 10000}}, qint64 shift = 3)
{
    DriveMark mark{QStringLiteral("9999")};
    mark.shift = shift;
    mark.nextReceipt = nextReceipt;
    mark.sums = {{sell, sums}};
    return mark;
}

DriveMark hexAfter(const DriveMark& mark, quint32 number, bool isShiftOpen = true)
{
    DriveMark after = mark;
    after.lastDocument = number;
    after.isShiftOpen = isShiftOpen;
    return after;
}

DriveMark state(quint32 number, bool isShiftOpen)
{
    return hexAfter({QStringLiteral("9999")}, number, isShiftOpen);
}

DriveMark cash(qint64 count, qint64 sum, qint64 drawer, qint64 shift = 3)
{
    DriveMark mark{QStringLiteral("9999")};
    mark.shift = shift;
    mark.cash = {{cashIn, {count, sum}}};
    mark.drawer = drawer;
    return mark;
}

const Movement sale20{sell, {{0, 2000}, {1, 0}}};
const PaymentSums withOurs{{0, 12000}};
const PaymentSums withOther{{0, 10000}, {1, 2000}};

struct Row
{
    const char* what;
    DriveMark before;
    DriveMark after;
    Movement ours;
    Outcome alone;
    Outcome shared;
    bool isContradictory = false;
    int times = 1;
    bool isXml = true;
};

DriveMark otherDrive(DriveMark mark)
{
    mark.drive = QStringLiteral("1111");
    return mark;
}

/// The mark xml(7), told by arithmetic behind another sale.
DriveMark counted()
{
    return markAfter(xml(6, PaymentSums{{0, 8000}}), {sell, {{0, 2000}}});
}

const Outcome issued = Outcome::Issued;
const Outcome notIssued = Outcome::NotIssued;
const Outcome unknown = Outcome::Unknown;

// clang-format off
const Row rows[] = {
    // Receipts over XML.
    {"number unmoved", xml(7), xml(7), sale20, notIssued, notIssued},
    {"another drive", xml(7), otherDrive(xml(8, withOurs)), sale20, unknown, unknown},
    {"older number", xml(7), xml(6), sale20, unknown, unknown},
    {"not told before", xml(0), xml(8, withOurs), sale20, unknown, unknown},
    {"not told after", xml(7), xml(0), sale20, unknown, unknown},
    {"moved by one, sums by ours", xml(7), xml(8, withOurs), sale20, issued, unknown},
    {"moved by one, other payment", xml(7), xml(8, withOther), sale20, notIssued, notIssued},
    {"moved by one, other sum", xml(7), xml(8, PaymentSums{{0, 55500}}), sale20, notIssued, notIssued},
    {"moved by one, no sum", xml(7), xml(8), sale20, notIssued, notIssued},
    {"moved by one, shift closed", xml(7), xml(8, std::nullopt), sale20, notIssued, notIssued},
    {"moved by two, no sum", xml(7), xml(9), sale20, notIssued, notIssued},
    {"moved by two, sums by ours", xml(7), xml(9, withOurs), sale20, unknown, unknown},
    {"moved by two, sums by ours and another", xml(7), xml(9, PaymentSums{{0, 15000}}), sale20, unknown, unknown},
    {"moved by two, shift closed", xml(7), xml(9, std::nullopt), sale20, unknown, unknown},
    {"a journal without sums", state(7, true), xml(8, withOurs), sale20, issued, unknown},
    {"over nothing", xml(7), xml(8), {sell, {{0, 0}}}, issued, unknown},
    // A receipt that was changed on the line, and answered well, had other sums.
    {"counted on, sums by ours", counted(), xml(8, withOurs), sale20, issued, unknown},
    {"counted on, other sum", counted(), xml(8, withOther), sale20, unknown, unknown, true},
    {"counted on, no sum", counted(), xml(8), sale20, unknown, unknown, true},
    // Two stories.
    {"number unmoved, sums by ours", xml(7), xml(7, withOurs), sale20, unknown, unknown, true},
    {"number unmoved, shift closed", xml(7), xml(7, std::nullopt), sale20, unknown, unknown, true},
    {"a digit of the sum before changed", xml(7, PaymentSums{{0, 60000}}), xml(8, withOurs), sale20, unknown, unknown, true},
    {"a digit changed, so that it looks unmoved", xml(7, PaymentSums{{0, 20000}}), xml(8, PaymentSums{{0, 20000}}), {sell, {{0, 10000}}}, unknown, unknown, true},
    {"the point lost", xml(7, PaymentSums{{0, 1000000}}), xml(8, withOurs), sale20, unknown, unknown, true},
    {"a zero of the kopecks lost", xml(7, PaymentSums{{0, 10050}}), xml(8, PaymentSums{{0, 12005}}), sale20, unknown, unknown, true},
    {"a sum before unreadable", xml(7, PaymentSums{}), xml(8, withOurs), sale20, unknown, unknown, true},
    {"the same over HEX", hex(5, {}), hex(6, withOurs), sale20, notIssued, notIssued, false, 1, false},
    // Receipts over HEX.
    {"receipt unmoved", hex(5), hexAfter(hex(5), 7), sale20, notIssued, notIssued, false, 1, false},
    {"receipt moved by one, sums by ours", hex(5), hexAfter(hex(6, withOurs), 8), sale20, issued, unknown, false, 1, false},
    {"receipt moved by one, no sum", hex(5), hexAfter(hex(6), 8), sale20, notIssued, notIssued, false, 1, false},
    {"receipt unmoved, sums by ours", hex(5), hexAfter(hex(5, withOurs), 8), sale20, unknown, unknown, true, 1, false},
    // Counted from one again, perhaps: what was before the closing, nobody knows.
    {"shift closed", hex(1, {}), hexAfter(hex(1, {}), 8, false), sale20, unknown, unknown, false, 1, false},
    {"another shift", hex(1, {}), hexAfter(hex(1, {}, 4), 9), sale20, unknown, unknown, false, 1, false},
    {"shift closed, drive's number moved by one", hexAfter(hex(5), 7), hexAfter(hex(5), 8, false), sale20, notIssued, notIssued, false, 1, false},
    // Other numbered documents.
    {"opening", state(7, false), state(8, true), {DocumentKind::ShiftOpening}, issued, unknown},
    {"opening, shift still closed", state(7, false), state(8, false), {DocumentKind::ShiftOpening}, notIssued, notIssued},
    {"opening unmoved", state(7, false), state(7, false), {DocumentKind::ShiftOpening}, notIssued, notIssued},
    {"opening unmoved, shift open", state(7, false), state(7, true), {DocumentKind::ShiftOpening}, unknown, unknown, true},
    {"closing", state(7, true), state(8, false), {DocumentKind::ShiftClosing}, issued, unknown},
    {"closing, somebody's receipt", state(7, true), state(8, true), {DocumentKind::ShiftClosing}, notIssued, notIssued},
    {"closing, moved by two", state(7, true), state(9, false), {DocumentKind::ShiftClosing}, unknown, unknown},
    {"report", state(7, false), state(8, false), {DocumentKind::Report}, issued, unknown},
    {"report, shift opened", state(7, false), state(8, true), {DocumentKind::Report}, notIssued, notIssued},
    {"report three times", state(7, false), state(10, false), {DocumentKind::Report}, issued, unknown, false, 3},
    {"report, moved by three over HEX", state(7, false), state(10, false), {DocumentKind::Report}, unknown, unknown, false, 1, false},
    // Cash in: counter, its sum, and the drawer.
    {"cash unmoved", cash(1, 500, 900), cash(1, 500, 900), {cashIn, {}, 100}, notIssued, notIssued},
    {"cash unmoved, drawer moved by a sale", cash(1, 500, 900), cash(1, 500, 950), {cashIn, {}, 100}, notIssued, notIssued},
    {"cash once", cash(1, 500, 900), cash(2, 600, 1000), {cashIn, {}, 100}, issued, unknown},
    {"cash twice", cash(1, 500, 900), cash(3, 700, 1100), {cashIn, {}, 100}, issued, unknown, false, 2},
    {"cash twice over HEX", cash(1, 500, 900), cash(3, 700, 1100), {cashIn, {}, 100}, unknown, unknown, false, 1, false},
    {"another sum", cash(1, 500, 900), cash(2, 570, 970), {cashIn, {}, 100}, notIssued, notIssued},
    {"sum without count", cash(1, 500, 900), cash(1, 600, 1000), {cashIn, {}, 100}, unknown, unknown, true},
    {"drawer tells another story", cash(1, 500, 900), cash(2, 600, 900), {cashIn, {}, 100}, unknown, unknown, true},
    {"fewer", cash(1, 500, 900), cash(0, 0, 900), {cashIn, {}, 100}, unknown, unknown},
    {"another shift, nothing counted yet", cash(0, 0, 900), cash(0, 0, 900, 4), {cashIn, {}, 100}, unknown, unknown},
    {"not told", cash(1, 500, 900), hex(5), {cashIn, {}, 100}, unknown, unknown},
};
// clang-format on

TEST(Verdict, FollowsTheTable)
{
    for (const Row& row : rows) {
        for (const bool isAlone : {true, false}) {
            const Judgement judgement
                = judge(row.before, row.after, row.ours, {isAlone, !row.isXml, row.isXml});
            Verdict expected = isAlone ? row.alone : row.shared;
            if (expected.outcome == issued) {
                expected.number = row.after.lastDocument;
                expected.times = row.times;
            }
            EXPECT_EQ(judgement.verdict, expected) << row.what << ", alone " << isAlone;
            EXPECT_EQ(judgement.isContradictory, row.isContradictory) << row.what;
        }
    }
}

} // namespace
