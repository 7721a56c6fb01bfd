// What a register answers in each phase of its fiscal drive's life, and with one that is full or old.

#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>

namespace {

using emulator::DriveLife;

struct LifeRow
{
    const char* what;
    DriveLife life;
    /// Flags of the state query, and warnings of the drive.
    int flags;
    int warnings;
    /// Answer codes: opening of the shift, receipt, accounting report, change of the registration, marking
    /// check, text.
    QList<int> codes;
    /// The first of them over XML.
    const char* opening;
    quint32 lastDocument;
};

const Step registration{0x08,
    {"", "ООО", "7701234567", "0000000001012345", "", "", "", "", "1", "0", "0", "7709876543", "", "", "",
        "128", "", ""}};

const LifeRow lifeRows[] = {
    {"not even ready", {0, {}, {}}, 32, 0, {82, 82, 82, 82, 82, 0}, "2.2005", 0},
    {"ready", {DriveLife::ready, {}, {}}, 32, 0, {82, 82, 82, 0, 82, 0}, "2.2005", 0},
    {"fiscal mode", {}, 0, 0, {0, 1, 0, 0, 0, 0}, "0.0", 1},
    {"closed", {DriveLife::closed, {}, {}}, 16, 0, {82, 82, 82, 82, 82, 0}, "2.2005", 2},
    {"read", {DriveLife::archiveRead, {}, {}}, 16, 0, {82, 82, 82, 82, 82, 0}, "2.2005", 2},
    {"room for a hundred", {DriveLife::fiscalMode, 100, {}}, 0, 4, {0, 1, 0, 0, 0, 0}, "0.0", 1},
    {"room for more", {DriveLife::fiscalMode, 101, {}}, 0, 0, {0, 1, 0, 0, 0, 0}, "0.0", 1},
    {"full", {DriveLife::fiscalMode, 0, {}}, 0, 4, {86, 1, 86, 86, 0, 0}, "2.2005", 1},
    {"29 days left", {DriveLife::fiscalMode, {}, 29}, 0, 2, {0, 1, 0, 0, 0, 0}, "0.0", 1},
    {"2 days left", {DriveLife::fiscalMode, {}, 2}, 0, 3, {0, 1, 0, 0, 0, 0}, "0.0", 1},
    {"expired", {DriveLife::fiscalMode, {}, -1}, 0, 3, {85, 1, 85, 85, 0, 0}, "2.2005", 1},
};

emulator::Identity identityWith(const DriveLife& life)
{
    emulator::Identity identity;
    identity.driveLife = life;
    return identity;
}

} // namespace

TEST(DriveLife, SaysWhatTheRegisterDoes)
{
    const QList<Step> steps{{0x6B, {"", ""}}, open(2), {0x6A, {""}}, registration, check(), open(1)};
    for (const LifeRow& row : lifeRows) {
        SCOPED_TRACE(row.what);
        for (qsizetype i = 0; i < steps.size(); ++i) {
            Rig rig(identityWith(row.life));
            rig.start();
            const QList<QByteArray> drive = rig.send({0xA4, {}}).fields;
            EXPECT_EQ(drive.value(0).toInt(), row.life.phase);
            EXPECT_EQ(drive.value(4).toInt(), row.warnings);
            EXPECT_EQ(rig.send({0xA0, {}}).fields.value(1).toInt(), row.flags);
            EXPECT_EQ(rig.ask(0xA4, {"1"}).toUInt(), row.lastDocument);
            EXPECT_EQ(rig.code(steps.at(i)), row.codes.at(i)) << i;
        }
        XmlRig rig(emulator::ProtocolChoice::Auto, identityWith(row.life));
        const XmlReply state = rig.send(2);
        EXPECT_EQ(state.value("LifePhase").toInt(), row.life.phase);
        EXPECT_EQ(state.value("StatusOverflow").toInt(), row.warnings / 4);
        EXPECT_EQ(state.value("StatusEndingResource").toInt(), row.warnings / 2 % 2);
        EXPECT_EQ(state.value("StatusNeedChange").toInt(), row.warnings % 2);
        EXPECT_EQ(rig.openShift(), row.opening);
    }
}

TEST(DriveLife, RegistrationBringsANewDriveIntoFiscalMode)
{
    Rig rig(identityWith({DriveLife::ready, {}, {}}));
    rig.start();
    EXPECT_EQ(rig.code({0x65, {"1"}}), 88);
    EXPECT_EQ(rig.code(registration), 0);
    EXPECT_EQ(rig.device.journal().entries().constLast().value("type"), "registration");
    EXPECT_EQ(rig.send({0xA4, {}}).fields.value(0), "3");
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 0);
}

TEST(DriveLife, FullDriveStillEndsTheShift)
{
    Rig rig(identityWith({DriveLife::fiscalMode, 2, {}}));
    rig.openShift();
    rig.run(sale());
    EXPECT_EQ(rig.device.state().shift.receipts, 1);
    EXPECT_EQ(rig.code(open(2)), 86);
    EXPECT_EQ(rig.code(open(4)), 0);
    rig.run({money("1.00"), finish()});
    EXPECT_EQ(rig.code({0x61, {"", ""}}), 0);
    EXPECT_EQ(rig.code({0x6B, {"", ""}}), 86);
}

TEST(ElectronicReceipt, NeedsPaperWhereItIsPrintedAllTheSame)
{
    for (const bool withoutPaper : {true, false}) {
        emulator::Identity identity;
        identity.electronicWithoutPaper = withoutPaper;
        for (const bool hasPaper : {true, false}) {
            Rig rig(identity);
            rig.openShift();
            rig.device.tape().clear();
            rig.device.setPaper(hasPaper);
            EXPECT_EQ(rig.code(open(1, 1, "1")), hasPaper ? 0 : 8) << "no receipt";
            rig.code(cancel());
            const bool isIssued = withoutPaper || hasPaper;
            EXPECT_EQ(rig.code(open(2, 1, "1")), isIssued ? 0 : 8);
            rig.run({item("1.000", "1.00"), text("x"), subtotal(), pay(0, "1.00"), finish()});
            EXPECT_EQ(rig.device.state().shift.receipts, isIssued ? 1 : 0);
            EXPECT_EQ(rig.device.tape().text().contains("КАССОВЫЙ ЧЕК"), !withoutPaper && hasPaper);

            XmlRig xml(emulator::ProtocolChoice::Auto, identity);
            xml.openShift();
            xml.device.setPaper(hasPaper);
            const QString sale = receipt(position("1.00", "1.000", "1.00"), "1.00")
                                     .replace(R"(n="DoNotPrint" t="4">0)", R"(n="DoNotPrint" t="4">1)");
            EXPECT_EQ(xml.run(8, sale), isIssued ? "0.0" : "3.8");
            EXPECT_EQ(xml.device.tape().text().contains("КАССОВЫЙ ЧЕК"), !withoutPaper && hasPaper);
        }
    }
}

TEST(Cancellation, IsToldThatThePaperEndedOnIt)
{
    for (const bool quietly : {false, true}) {
        Rig rig;
        rig.openShift();
        rig.run({open(2), item("1.000", "1.00")});
        rig.device.setPaperLeft(1, quietly);
        EXPECT_EQ(rig.code(cancel()), quietly ? 0 : 8);
        EXPECT_FALSE(rig.device.document().isOpen());
        EXPECT_EQ(rig.device.state().shift.counters.cancelled, 1);
    }
}
