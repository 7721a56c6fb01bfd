#include "rig.h"

#include <gtest/gtest.h>

namespace {

struct HexRow
{
    const char* what;
    QList<Step> before;
    Step step;
    /// The answer code, and that of a lenient register where it is another one.
    int code;
    int lenient = -1;
};

Step with(Step step, qsizetype field, const QByteArray& bytes)
{
    step.fields.resize(qMax(step.fields.size(), field));
    step.fields[field - 1] = bytes;
    return step;
}

Step agent(const QByteArray& supplier)
{
    return {0x3C, {"64", "", "", "", "", "", "", "", "", supplier, ""}};
}

Step barcode(const QByteArray& kind, const QByteArray& data)
{
    return {0x24, {"2", "2", "100", kind, data}};
}

Step qrCode(const QByteArray& constant)
{
    return {0x29, {"4", constant, "qr"}};
}

const QByteArray longLine(300, 'x');
const QList<Step> sold{open(2), item("1.000", "1.00"), subtotal()};
const QList<Step> paid = sold + QList<Step>{pay(0, "1.00")};

// Each begins with a shift that was just opened.
const QList<HexRow> hexRows{
    {"a field too many", {}, {0xA0, {""}}, 3, 0},
    {"a version with two numbers", {}, {0xA5, {"1", "1"}}, 3, 0},
    {"a half of the version that there is not", {}, {0xA5, {"0", "2"}}, 3, 0},
    {"the release", {}, {0xA5, {"0", "1"}}, 0},
    {"tax systems of the registration", {}, {0xC0, {"10"}}, 0},
    {"another part of the registration", {}, {0xC0, {"4"}}, 3, 0},
    {"quantity without decimals", {open(2)}, item("1", "1.00"), 3, 0},
    {"quantity of two decimals", {open(2)}, item("1.00", "1.00"), 3, 0},
    {"quantity of a check is as short as can be", {}, with(check(), 3, "0.25"), 0},
    {"quantity of a check with decimals", {}, with(check(), 3, "1.000"), 3, 0},
    {"price without decimals", {open(2)}, item("1.000", "1"), 3, 0},
    {"price that is no zero", {open(2)}, item("1.000", "-0.00"), 3, 0},
    {"price of zero", {open(2)}, item("1.000", "0.00"), 0},
    {"price with a blank", {open(2)}, item("1.000", " 1.00"), 3, 0},
    {"payment of one decimal", sold, pay(0, "1.0"), 3, 0},
    {"price with a zero before it", {open(2)}, item("1.000", "01.00"), 3, 0},
    {"tax rate that is not told", {open(2)}, item("1.000", "1.00", ""), 3, 0},
    {"payment method with a sign", {open(2)}, item("1.000", "1.00", "1", "1", "+4"), 3, 0},
    {"industry's date that is no leap day in 1900", {open(2)}, with(item("1.000", "1.00"), 18, "290200"), 0},
    {"industry's date that there is not", {open(2)}, with(item("1.000", "1.00"), 18, "290201"), 3},
    {"result of a check that is not told", {open(2)}, with(item("1.000", "1.00"), 16, ""), 0},
    {"document's number with a zero before it", {}, {0x65, {"01"}}, 3, 0},
    {"cash-in without decimals", {open(4)}, money("1"), 3, 0},
    {"supplier of 19 characters", {open(2)}, agent("ООО Поставщик № 123"), 0},
    {"supplier of 20 characters", {open(2)}, agent("ООО Поставщик № 1234"), 3, 0},
    {"EAN-13 of 13 digits", {open(1)}, barcode("2", "4601234567890"), 0},
    {"EAN-13 of 14 digits", {open(1)}, barcode("2", "46012345678901"), 3, 0},
    {"EAN-13 of 12 digits and a blank", {open(1)}, barcode("2", " 460123456789"), 3},
    {"a switch that is told to be on with a zero before it", QList<Step>{{0xA2, {"30", "0", "01"}}} + sold,
        finish(), 0},
    {"barcode of 10,000 characters", {open(1)}, barcode("5", QByteArray(10'000, '7')), 0},
    {"barcode without text", {open(1)}, barcode("5", ""), 0},
    {"QR code without text", {open(1)}, with(qrCode("1"), 3, ""), 0, 3},
    {"a kind of barcode that has no name", {open(1)}, barcode("11", "x"), 0},
    {"a kind of barcode that there is not", {open(1)}, barcode("9", "x"), 3},
    {"line that is high and wide", {open(1)}, text("x", 48), 0},
    {"line that is high and small", {open(1)}, text("x", 17), 3, 0},
    {"line with another bit", {open(1)}, text("x", 8), 3, 0},
    {"line with a tab", {open(1)}, text("x\t", 0), 3, 0},
    {"line with a deleted character", {open(1)}, text("x\x7F", 0), 3, 0},
    {"quantity that is none", {}, with(check(), 3, "nan"), 3},
    {"quantity without end", {}, with(check(), 3, "inf"), 3},
    {"customer's address of 256 bytes", {}, with(open(2), 7, QByteArray(256, 'x')), 0},
    {"price of a kopeck less than nothing", {open(2)}, item("1.000", "-0.01"), 3},
    {"customer's address of 257 bytes", {}, with(open(2), 7, QByteArray(257, 'x')), 3},
    // Lenient or not
    {"second open", {open(2)}, open(2), 1},
    {"unknown document", {}, open(0), 3},
    {"tax system not registered", {}, open(2, 4), 105},
    {"cash-in does not mind the tax system", {}, open(4, 4), 0},
    {"position without document", {}, item("1.000", "1.00"), 1},
    {"position in a text", {open(1)}, item("1.000", "1.00"), 1},
    {"position after the subtotal", {open(2), item("1.000", "1.00"), subtotal()}, item("1.000", "1.00"), 1},
    {"no quantity", {open(2)}, item("0.000", "1.00"), 3},
    {"price beyond all receipts", {open(2)}, item("1000000.000", "99999999.00"), 3},
    {"payment method", {open(2)}, item("1.000", "1.00", "1", "1", "8"), 3},
    {"marked goods without code", {open(2)}, item("1.000", "1.00", "1", "33"), 140},
    {"subtotal of nothing", {open(2)}, subtotal(), 1},
    {"payment before the subtotal", {open(2), item("1.000", "1.00")}, pay(0, "1.00"), 1},
    {"card beyond the total", {open(2), item("1.000", "1.00"), subtotal()}, pay(1, "1.01"), 3},
    {"payment of what is paid", {open(2), item("1.000", "1.00"), subtotal(), pay(0, "1.00")}, pay(1, "1.00"),
        1},
    {"negative payment", {open(2), item("1.000", "1.00"), subtotal()}, pay(0, "-1.00"), 3},
    {"finish short of a kopeck", {open(2), item("1.000", "1.00"), subtotal(), pay(0, "0.99")}, finish(), 1},
    {"finish before the subtotal", {open(2), item("1.000", "1.00")}, finish(), 1},
    {"finish of a gift", {open(2), item("1.000", "0.00"), subtotal()}, finish(), 0},
    {"cancel without document", {}, cancel(), 1},
    {"cash-out of more than there is", {open(5)}, money("0.01"), 14},
    {"cash-out of nothing", {open(5)}, money("0.00"), 3},
    {"second sum", {open(4), money("1.00")}, money("1.00"), 1},
    {"sum in a sale", {open(2)}, money("1.00"), 1},
    {"finish of a cash-in without sum", {open(4)}, finish(), 1},
    {"line of 257 bytes", {open(1)}, {0x21, {longLine.left(257), "0"}}, 3},
    {"line of 256 bytes", {open(1)}, {0x21, {longLine.left(256), "0"}}, 0},
    {"unknown agent", {open(2)}, {0x3C, QList<QByteArray>{"128"} + QList<QByteArray>(10)}, 3},
    {"code never checked", {open(2)}, bind(), 142},
    {"code bound to nothing yet", {check(), open(2), bind()}, bind(), 131},
    {"check between bind and position", {check(), open(2), bind()}, check(), 131},
    {"subtotal with a code left over", {check(), open(2), item("1.000", "1.00"), bind()}, subtotal(), 1},
    {"clearing in a receipt", {check(), open(2)}, {0x3F, {}}, 131},
    {"code forgotten", {check(), {0x3F, {}}, open(2)}, bind(), 142},
    {"check of no hexadecimal", {}, {0x3D, {"0", "1", "1", "0", "", "", "0G", "0", "", ""}}, 3},
    {"check of an unknown status", {}, {0x3D, {"0", "6", "1", "0", "", "", "30", "0", "", ""}}, 3},
    {"second shift", {}, {0x6B, {"", ""}}, 1},
    {"Z report in a document", {open(1)}, {0x61, {"", ""}}, 1},
    {"Z report of a closed shift", {{0x61, {"", ""}}}, {0x61, {"", ""}}, 1},
    {"sale without shift", {{0x61, {"", ""}}}, open(2), 1},
    {"text without shift", {{0x61, {"", ""}}}, open(1), 0},
    {"accounting report in a shift", {}, {0x6A, {""}}, 1},
    {"clock in a shift", {}, {0xA3, {"010324", "100000"}}, 1},
    {"clock before the last document", {{0x61, {"", ""}}}, {0xA3, {"010324", "085959"}}, 12},
    {"start with another clock", {}, {0x00, {"010324", "090501"}}, 11},
    {"start five minutes off", {}, {0x00, {"010324", "090500"}}, 0},
    {"document that is not stored", {}, {0x65, {"3"}}, 88},
    {"document of a great number", {}, {0x65, {"4294967295"}}, 88},
    {"document beyond 32 bits", {}, {0x65, {"4294967296"}}, 3},
    {"registration in a shift", {}, {0x08, QList<QByteArray>(18)}, 3},
    {"cashier's INN", {{0x61, {"", ""}}}, {0x6B, {"", "12x"}}, 3},
};

} // namespace

TEST(HexStrict, TakesOnlyWhatHostsSend)
{
    for (const HexRow& row : hexRows) {
        for (const bool lenient : {false, true}) {
            const int code = lenient && row.lenient >= 0 ? row.lenient : row.code;
            Rig rig;
            rig.protocol.setLenient(lenient);
            rig.openShift();
            rig.run(row.before);
            EXPECT_EQ(rig.code(row.step), code) << row.what << (lenient ? ", leniently" : "");
        }
    }
}

TEST(HexStrict, TakesNothingElseInFieldsThatAreEmptyOrConstant)
{
    // What comes before, the step as hosts send it, and its fields.
    const std::tuple<QList<Step>, Step, QList<int>> rows[] = {
        {{}, {0x08, {"", "", "", "", "", "", "", "", "", "", "", "", "", "", "", "128", "", ""}},
            {1, 6, 16, 17, 18}},
        {{}, open(2), {2, 5, 9, 10}},
        {paid, finish(), {1, 2, 3}},
        {{open(1)}, qrCode("1"), {2}},
        {{open(2)}, item("1.000", "1.00"), {5, 7, 9, 10, 15, 21, 22, 23}},
        {{open(4)}, money("1.00"), {1}},
        {{}, check(), {1, 5, 6, 8, 9, 10}},
        {{check(), open(2)}, bind(), {2, 3, 4}},
    };
    for (const auto& [before, step, fields] : rows) {
        for (const int field : fields) {
            for (const bool lenient : {false, true}) {
                Rig rig;
                rig.protocol.setLenient(lenient);
                rig.openShift();
                rig.run(before);
                rig.device.refusals().clear();
                const int code = rig.code(with(step, field, "7"));
                const auto& refused = rig.device.refusals().all();
                const QString reason = refused.isEmpty() ? QString() : refused.constLast().reason;
                const QString words = QStringLiteral(": field %1 is always").arg(field);
                EXPECT_EQ(reason.contains(words), !lenient) << step.code << ' ' << field;
                EXPECT_TRUE(lenient || code == 3);
            }
        }
    }
}

TEST(HexStrict, SaysWhy)
{
    const std::tuple<Step, const char*, const char*> refusals[] = {
        {with(open(2), 2, "1"), "3", "20: field 2 is always \"\""},
        {with(finish(), 2, "0"), "3", "22: field 2 is always \"1\""},
        {{0xA0, {"", ""}}, "3", "A0: 0 fields, 2 are too many"},
        {{0x21, {"x"}}, "3", "21: 2 fields, 1 are too few"},
        {item("1.000", "1"), "3", "30: field 4 is a number with 2 decimals: \"1\""},
        {with(open(2), 4, QByteArray(65, '7')), "3",
            "20: field 4 is 12 digits at most: \"7777777777777777777777777777777777777777777777777777777777777777... (65 bytes)\""},
        {finish(), "1", "22: not in this state: the shift is open, a document is open"},
        {item("1.000", "1.00", "13"), "3", "30: a tax rate that is none of 0 to 12"},
        {money("1.00"), "1", "36: not in this state: the shift is open, a document is open"},
        {{0xA4, {"4"}}, "3", "A4: field 1 is one of 1, 2, 3, 5, 6, 7, 8, 10, 11, 12, 14, 15: \"4\""},
        {{0xA2, {"50", "0", "x"}}, "1", "A2: setting 50 is only read"},
        {with(open(2), 6, "1\x1B"), "3", "20: field 6 is a number: \"1\\x1b\""},
        {with(open(2), 8, "2"), "3", "20: field 8 is a number from 0 to 1: \"2\""},
        {{0xA2, {"6", "0", "9"}}, "3", "A2: setting 6 is a number from 0 to 1"},
        {{0xA2, {"82", "0", "310224"}}, "3", "A2: setting 82 is a date, ddMMyy"},
        {{0xA2, {"31", "0", "abc"}}, "3", "A2: setting 31 is a text of 4 characters"},
        {{0xA2, {"52", "0", "1.1.1"}}, "3", "A2: setting 52 is a text of 7 to 15 characters"},
        {{0xA2, {"20", "4", "x"}}, "3", "A2: there is no setting 20 with row 4"},
        {{0x24, {"0", "2", "50", "2", "12"}}, "3",
            "24: field 5 is from 12 to 13 digits with this kind: \"12\""},
        {text("x", 4), "3", "21: attribute 4 is none of 0, 1, 16, 32, 48 and 128"},
    };
    Rig rig;
    rig.openShift();
    rig.run({open(2)});
    for (const auto& [step, error, reason] : refusals) {
        const Reply reply = rig.send(step);
        const emulator::RefusedRequest& refused = rig.device.refusals().all().constLast();
        EXPECT_EQ(refused.error, error);
        EXPECT_EQ(reply.code, refused.error.toInt());
        EXPECT_EQ(refused.reason.toStdString(), reason);
        EXPECT_TRUE(refused.request.contains(refused.command.toLatin1()));
    }
    EXPECT_EQ(rig.device.refusals().all().size(), static_cast<qsizetype>(std::size(refusals)));
    rig.run({cancel()});
    rig.exchange(rig.frame({0xE2, {"4"}}));
    EXPECT_EQ(rig.parse(rig.exchange(QByteArray("\x1B") + "GIF8")).code, 3);
    EXPECT_EQ(rig.device.refusals().all().constLast().reason,
        "E2: the picture is no bitmap of 288 by 100 dots with one bit each");
}

TEST(HexStrict, KeepsWrittenSettingsAsTheirBytes)
{
    const QByteArray written = "Вход";
    for (const bool lenient : {false, true}) {
        Rig rig;
        rig.protocol.setLenient(lenient);
        rig.start();
        rig.run({{0xA2, {"20", "2", written}}});
        EXPECT_EQ(rig.ask(0xA1, {"20", "2"}), lenient ? to866("Вход") : written);
    }
}

TEST(HexStrict, AsksForThePasswordThatWasSet)
{
    Rig rig;
    rig.start();
    EXPECT_EQ(rig.code({0xA2, {"31", "0", "abc"}}), 3);
    EXPECT_EQ(rig.code({0xA2, {"31", "0", "\x8F\x80\x90\x8E"}}), 0);
    EXPECT_EQ(rig.code({0xA0, {}}), 6);
    QByteArray body = rig.frame({0xA0, {}}).mid(1).chopped(2).replace("QZXW", "\x8F\x80\x90\x8E");
    EXPECT_EQ(rig.parse(rig.exchange('\x02' + body + Rig::check(body))).code, 0);
    rig.device.parameters().reset(31);
    EXPECT_EQ(rig.code({0xA0, {}}), 0);
}
