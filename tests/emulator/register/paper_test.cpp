#include "register/bitmappicture.h"
#include "rig.h"
#include "tape/pagetext.h"
#include "xmlrig.h"

#include <gtest/gtest.h>

namespace {

/// A bitmap of one bit a dot; a negative height tells the rows from the top.
QByteArray bitmap(qint32 width, qint32 height, const QByteArray& rows, const QByteArray& colours)
{
    const auto number = [](qint32 value) { return QByteArray(reinterpret_cast<const char*>(&value), 4); };
    QByteArray head = number(40) + number(width) + number(height) + QByteArray::fromHex("01000100");
    head += QByteArray(24, '\0');
    return "BM" + QByteArray(8, '\0') + number(62) + head + QByteArray::fromHex(colours) + rows;
}

QList<tape::Code> printedCodes(emulator::Register& device)
{
    QList<tape::Code> found;
    for (const tape::Page& page : device.tape().pages()) {
        for (const tape::Line& line : page.lines) {
            if (const auto* const one = std::get_if<tape::Code>(&line))
                found.append(*one);
        }
    }
    return found;
}

/// The tape of a day with a sale of 10 roubles and of its reports.
QString day(XmlRig& rig)
{
    rig.device.tape().clear();
    const QString cashier = pa("1021", 1, "Иванова");
    EXPECT_EQ(rig.openShift(), "0.0");
    EXPECT_EQ(rig.run(8, receipt(position("10.00", "1.000", "10.00"), "10.00")), "0.0");
    EXPECT_EQ(rig.run(6, pa("5", 7, cashier)), "0.0");
    return rig.device.tape().text();
}

} // namespace

TEST(Paper, ShowsTheLogoDotByDot)
{
    const QByteArray blackIsZero = "00000000FFFFFF00";
    const QByteArray blackIsOne = "FFFFFF0000000000";
    const QByteArray rows = QByteArray::fromHex("8080000001000000");
    const std::tuple<QByteArray, const char*, const char*> cases[]{
        {bitmap(9, 2, rows, blackIsOne), "01008080", "rows from below"},
        {bitmap(9, -2, rows, blackIsOne), "80800100", "rows from above"},
        {bitmap(9, 2, rows, blackIsZero), "fe807f00", "colours the other way round"},
        {bitmap(9, 2, rows.chopped(1), blackIsOne), "00000000", "a byte too few"},
        {bitmap(9, 2, rows, blackIsOne).replace(28, 1, "\x08"), "00000000", "a byte a dot"},
    };
    for (const auto& [bytes, dots, what] : cases) {
        const auto picture = emulator::pictureOf(bytes, "x");
        ASSERT_TRUE(picture && picture->isWhole()) << what;
        EXPECT_EQ(picture->rows.toHex().toStdString(), dots) << what;
    }
    EXPECT_FALSE(emulator::pictureOf(bitmap(-9, 2, rows, blackIsOne), "x"));
}

TEST(Paper, LinesAndCodesKeepWhatTheHostSaidOfThem)
{
    Rig rig;
    rig.start();
    rig.run({open(1), text("мелко", 1), text("высоко", 16), text("широко", 32), text("крупно", 48),
        text("темно", 128), {0x24, {"2", "3", "100", "2", "460123456789"}},
        {0x24, {"0", "0", "0", "14", "x"}}, {0x29, {"4", "1", to866("код")}}, finish()});
    const QList<tape::Code> expected{
        {tape::Symbology::Ean13, "460123456789", -1, 3, 100, tape::CodeCaption::Below},
        {tape::Symbology::Other, "x", 14}, {tape::Symbology::Qr, "код", -1, 4}};
    EXPECT_EQ(printedCodes(rig.device), expected);
    EXPECT_EQ(missingFrom(rig.device.tape().text(),
                  {"·мелко", "↕высоко", "↔ш и р о к о", "⤢к р у п н о", "▒темно", "[EAN-13]", "[QR]"}),
        "");
    EXPECT_TRUE(rig.device.journal().entries().isEmpty());
    // A code that the paper ends in is of no use to anybody: the next roll has it from its beginning.
    rig.run({open(1), {0x29, {"4", "1", "qr"}}});
    rig.device.tape().clear();
    rig.device.setPaperLeft(4, false);
    EXPECT_EQ(rig.code(finish()), 8);
    EXPECT_EQ(rig.device.tape().lines().size(), 3);
    rig.device.setPaper(true);
    EXPECT_EQ(rig.code(finish()), 0);
    EXPECT_EQ(printedCodes(rig.device).size(), 1);
}

TEST(Paper, TextBehindAReceiptHasFontsAndCodes)
{
    XmlRig rig;
    rig.openShift();
    const auto sale = [](const QString& tail) {
        return receipt(position("10.00", "1.000", "10.00"), "10.00", "0.00",
            pa("Footer", 1, "СДАЧА: 0.00") + pa("TextAfterDoc", 1, tail));
    };
    EXPECT_EQ(rig.run(8, sale("‼?q0009t=1")), "1.1004");
    EXPECT_EQ(rig.run(8, sale("‼?f0640028x")), "1.1004");
    rig.device.tape().clear();
    EXPECT_EQ(rig.run(8, sale("Ждём\n‼?f0160028снова\n‼?b134601234567890\n‼?q0003t=1")), "0.0");
    EXPECT_EQ(
        missingFrom(rig.device.tape().text(), {"СПАСИБО", "\nЖдём\n↕снова\n┌─[EAN-13]─", "[QR]", "│ t=1 "}),
        "");
    rig.device.tape().clear();
    rig.line.setLenient(true);
    EXPECT_EQ(rig.run(8, sale("")), "0.0");
    const QStringList lines = rig.device.tape().lines();
    EXPECT_TRUE(lines.at(lines.size() - 4).contains("СПАСИБО")) << "an empty tail is no line";
}

TEST(Paper, SettingsShowOnIt)
{
    // What a setting makes appear and vanish.
    const std::tuple<const char*, const char*, const char*, const char*, QStringList, QStringList> changes[]{
        {"PRN", "Cutter", "UseCutter", "false", {}, {"- - - -"}},
        {"PRN", "PrinterHeader", "PrintUserAddrInCliche", "true", {"г. Москва, ул. Полевая"}, {}},
        {"MACRO", "FDDesign", "PrintOFDName", "true", {"ОФД: ОФД-ТЕСТ"}, {}},
        {"MACRO", "FDDesign", "PrintReceiptSite", "true", {"САЙТ ЧЕКОВ: receipt.example"}, {}},
        {"MACRO", "FDDesign", "PrintTag1212", "true", {"ПРИЗНАК ПРЕДМЕТА РАСЧЕТА: 1"}, {}},
        {"MACRO", "FDDesign", "PrintCashDrawerSection", "false", {},
            {"ВНЕСЕНИЕ", "ИЗЪЯТИЕ", "НАЛИЧНЫХ В ДЕНЕЖНОМ ЯЩИКЕ"}},
        {"MACRO", "KKTCounters", "PrintZeroCounters", "false", {},
            {"ВОЗВРАТ ПРИХОДА: 0", "БЕЗНАЛИЧНЫМИ", "ВНЕСЕНИЕ", "АННУЛИРОВАНО"}},
        {"MACRO", "KKTCounters", "UseCumulativeCounters", "true", {"НАКОПИТЕЛЬНЫЕ ИТОГИ\nПРИХОД: 2"}, {}},
    };
    for (const auto& [section, subsection, name, value, appearing, vanishing] : changes) {
        XmlRig rig;
        const QString before = day(rig);
        EXPECT_EQ(rig.set(section, subsection, pa(name, 1, value)), "0.0");
        const QString after = day(rig);
        for (const QString& text : appearing)
            EXPECT_TRUE(!before.contains(text) && after.contains(text)) << name << after.toStdString();
        for (const QString& text : vanishing)
            EXPECT_TRUE(before.contains(text) && !after.contains(text)) << name << after.toStdString();
        EXPECT_TRUE(after.contains("ПРИХОД: 1")) << name;
    }
    Rig hex;
    hex.openShift();
    hex.run({{0xA2, {"25", "0", to866("В ТОМ ЧИСЛЕ:")}}});
    hex.run(sale());
    EXPECT_EQ(missingFrom(hex.device.tape().text(), {"НАЛИЧНЫМИ", "\nВ ТОМ ЧИСЛЕ:\nСУММА НДС"}), "");
}

TEST(Paper, IsAsWideAsItIsSetTo)
{
    XmlRig rig;
    const auto setWidth
        = [&rig](const char* width) { return rig.set("PRN", "Printer", pa("PrintWidthChars", 1, width)); };
    for (const char* const width : {"0", "23", "65", "-1", "x", ""})
        EXPECT_EQ(setWidth(width), "1.1004") << width;
    EXPECT_EQ(setWidth("32"), "0.0");
    EXPECT_EQ(rig.send(2).value("PaperWidth"), "32");
    day(rig);
    qsizetype widest = 0;
    for (const QString& line : rig.device.tape().lines())
        widest = qMax(widest, line.size());
    EXPECT_EQ(widest, 32);
    // A copy looks like the page that it is of.
    EXPECT_EQ(setWidth("48"), "0.0");
    rig.device.tape().clear();
    EXPECT_EQ(rig.run(28), "0.0");
    EXPECT_TRUE(rig.device.tape().text().contains('\n' + QString(32, '-') + '\n'));
}

TEST(Settings, ClockIsSetInAShiftInAnEmergencyOnly)
{
    XmlRig rig;
    rig.openShift();
    const QString time = pa("200001", 7, pa("DateTime", 5, "2024-03-01 09:10:00"));
    EXPECT_EQ(rig.run(24, time), "1.1002");
    EXPECT_EQ(rig.set("MACRO", "EMERGENCY", pa("EmergencyRTCSet", 1, "true")), "0.0");
    EXPECT_EQ(rig.run(24, time), "0.0");
    EXPECT_EQ(rig.send(22).value("200001"), "2024-03-01 09:10:00");
}

TEST(Paper, OpenCoverIsAPrinterThatIsNotReady)
{
    // The answer code under an open cover, and with the paper taken out.
    const std::tuple<const char*, QList<Step>, Step, int, int> rows[]{
        {"report", {}, {0x60, {""}}, 9, 8},
        {"receipt", {}, open(2), 9, 8},
        {"line", {open(1)}, text(QStringLiteral("строка")), 9, 8},
        {"end of a document", {open(1)}, finish(), 9, 8},
        {"position", {open(2)}, item("1.000", "1.00"), 0, 0},
        {"cancellation", {open(2)}, cancel(), 0, 0},
        {"electronic receipt", {}, open(2, 1, "1"), 0, 0},
    };
    for (const auto& [what, before, step, cover, paper] : rows) {
        for (const auto& [isCoverOpen, isPaperIn] : {std::pair{true, true}, {true, false}, {false, false}}) {
            Rig rig;
            rig.openShift();
            rig.run(before);
            rig.device.setPaper(isPaperIn);
            rig.device.setCover(isCoverOpen);
            EXPECT_EQ(rig.code(step), isCoverOpen ? cover : paper) << what;
        }
    }
    XmlRig rig;
    rig.device.setCover(true);
    EXPECT_EQ(rig.openShift(), "3.9");
    rig.device.setCover(false);
    EXPECT_EQ(rig.openShift(), "0.0");
}
