#include "kept.h"
#include "xmlrig.h"

#include <gtest/gtest.h>

namespace {

QString agentPosition()
{
    return markedPosition(pa("1224", 7, pa("1171", 1, "+70000000000") + pa("1225", 1, "ООО Ферма"))
        + pa("1222", 1, "64") + pa("1226", 1, "7701234567") + pa("1223", 7, pa("1044", 1, "перевод"))
        + pa("1260", 7,
            pa("1262", 1, "030") + pa("1263", 1, "01.02.2024") + pa("1264", 1, "12") + pa("1265", 1, "x"))
        + pa("1230", 1, "643") + pa("1231", 1, "10/1"));
}

} // namespace

TEST(XmlLink, RequestThatIsTooLongIsRefusedOnceItHasEnded)
{
    XmlRig rig;
    const QByteArray request = rig.request(4, pa("2", 7, pa("1021", 1, QString(2'000'000, 'x'))));
    QByteArray answer;
    for (qsizetype start = 0; start < request.size(); start += 4095)
        answer += rig.exchange(request.mid(start, 4095)).bytes;
    const XmlReply reply{answer};
    EXPECT_EQ(reply.verdict(), "5.5002");
    EXPECT_EQ(reply.element("RequestId"), rig.id());
    EXPECT_EQ(rig.run(44), "0.0");
}

TEST(XmlLink, FindsRequestsInTheStreamOfBytesAndTellsTheProtocolsApart)
{
    XmlRig rig;
    Rig hex;
    const QByteArray request = rig.request(22);
    QByteArray answer;
    for (const char byte : "\r\n " + request)
        answer += rig.exchange(QByteArray(1, byte)).bytes;
    EXPECT_EQ(XmlReply{answer}.value("200001"), "2024-03-01 09:00:00");
    EXPECT_EQ(rig.exchange(request + request).bytes.count("</ArmResponse>"), 2);
    // What broke off is forgotten after a second; the next request may be one of the other protocol.
    EXPECT_EQ(rig.exchange(request.left(200)).bytes, "");
    rig.clock.advance(1001);
    EXPECT_EQ(rig.exchange("\x05").bytes, "\x06");
    EXPECT_EQ(hex.parse(rig.exchange(hex.frame({0xA6, {}})).bytes).code, 0);
    EXPECT_EQ(rig.openShift(), "0.0");
    // A frame keeps its "<", a text its control bytes.
    rig.exchange(hex.frame({0x00, {"010324", "090000"}}));
    const QByteArray frame = hex.frame({0xA1, {"20", "<0"}});
    rig.exchange(frame.left(11));
    EXPECT_EQ(hex.parse(rig.exchange(frame.mid(11)).bytes).code, 3);
    EXPECT_EQ(hex.parse(rig.exchange(hex.frame({0xA5, {"1"}})).bytes).fields, QList<QByteArray>{"1"});
    XmlRig fixed(emulator::ProtocolChoice::Xml);
    EXPECT_EQ(fixed.exchange("\x05").bytes, "");
    EXPECT_EQ(fixed.set("POS", "Transport", pa("ResponseOnError", 1, "false")), "0.0");
    EXPECT_EQ(fixed.exchange(fixed.request(44).replace("UKM", "ukm")).bytes, "");
    EXPECT_EQ(fixed.run(44), "0.0");
}

TEST(XmlSale, IsJournalledPrintedAndCounted)
{
    XmlRig rig;
    ASSERT_EQ(rig.openShift(), "0.0");
    ASSERT_EQ(rig.money(1, "100.00"), "0.0");
    EXPECT_EQ(rig.send(76, markingCheck()).value("2106"), "3");
    const QString more = pa("1203", 1, "771234567890") + pa("1008", 1, "a@b.example") + pa("1192", 1, "доп")
        + pa("1256", 7, pa("1227", 1, "Петров") + pa("1228", 1, ""))
        + pa("HeaderText", 1,
            "‼?f0080028жирно\nпросто\n‼?f1280028негатив\n‼?q0004q\nr1\n‼?b134601234567890\n‼?b100"
                + QString(100, '7'))
        + pa("Footer", 1, "СДАЧА: 90.00") + pa("TextAfterDoc", 1, "Ждём\nснова");
    const QString document
        = receipt(agentPosition() + position("10.00", "0.333", "10.00"), "73.33", "100.00", more);
    rig.device.tape().clear();
    const XmlReply reply = rig.send(8, document);
    ASSERT_EQ(reply.verdict(), "0.0") << reply.bytes.toStdString();
    EXPECT_EQ(reply.value("1040"), "3");
    EXPECT_EQ(reply.value("1042"), "1");

    const QJsonObject entry = rig.device.journal().entries().constLast();
    // What else was said is told in the journals of the examples.
    EXPECT_EQ(entry.value("total"), "173.33");
    EXPECT_EQ(entry.value("payments"), (QJsonObject{{"cash", "73.33"}, {"electronically", "100.00"}}));
    EXPECT_EQ(entry.value("fiscalSign"), reply.value("1077"));
    expectAllKept(rig.device);

    const QStringList tape = rig.device.tape().lines();
    EXPECT_EQ(missingFrom(tape.join('\n'),
                  {"\n■жирно", "\nпросто", "\n▒негатив", "\n│ q\nr1", "\n│ 4601234567890", "\n│ 7777777777",
                      "\n[М]", "\nИТОГ", "\nСДАЧА: 90.00", "\nФПД:", "\nЖдём", "\nснова"}),
        "");
    EXPECT_EQ(rig.run(8, QString(document).replace(R"(n="DoNotPrint" t="4">0)", R"(n="DoNotPrint" t="4">1)")),
        "1.1004")
        << "the code is used up";
    const QString back = receipt(position("60.05", "1.000", "60.05"), "60.05")
                             .replace(R"(n="1054" t="4">1)", R"(n="1054" t="4">2)");
    EXPECT_EQ(
        rig.run(8, QString(back).replace(R"(n="DoNotPrint" t="4">0)", R"(n="DoNotPrint" t="4">1)")), "0.0");
    EXPECT_EQ(rig.device.tape().lines(), tape);
    EXPECT_EQ(rig.device.state().drawer.cash, 10000 + 7333 - 6005);
}

TEST(XmlSale, PaperThatEndsIsOneReceiptAndItsRestIsPrintedLater)
{
    const QString sale = receipt(position("10.00", "1.000", "10.00"), "10.00");
    for (const bool quietly : {false, true}) {
        XmlRig rig;
        rig.openShift();
        rig.device.setPaper(false);
        EXPECT_EQ(rig.run(8, sale), "3.8");
        EXPECT_EQ(rig.device.drive().last().number, 2U) << "nothing is stored of what cannot begin to print";
        rig.device.tape().clear();
        rig.device.setPaper(true);
        rig.device.setPaperLeft(5, quietly);
        // A host that closes once more has the tax system in it once more.
        const QString system = pa("1055", 4, "1");
        const QString again = QString(sale).replace(system, system + system);
        EXPECT_EQ(rig.run(8, again), quietly ? "0.0" : "3.8");
        EXPECT_EQ(rig.device.drive().last().number, 3U);
        EXPECT_EQ(rig.device.tape().lines().size(), 5);
        EXPECT_EQ(rig.run(8, sale), "3.8");
        rig.device.setPaper(true);
        EXPECT_EQ(rig.device.tape().text().count("КАССОВЫЙ ЧЕК"), 1);
        EXPECT_TRUE(rig.device.tape().text().contains("ФД: 3"));
        // What is sent again is another sale.
        EXPECT_EQ(rig.run(8, sale), "0.0");
        EXPECT_EQ(rig.device.state().shift.counters.sales.count, 2);
    }
}

TEST(XmlService, RefusesWhatTheStateForbids)
{
    XmlRig rig;
    const QString sale = receipt(position("10.00", "1.000", "10.00"), "10.00");
    const QString cashier = pa("1021", 1, "Иванова");
    const auto setTime = [](const char* time) { return pa("200001", 7, pa("DateTime", 5, time)); };
    EXPECT_EQ(rig.run(8, sale), "1.1002");
    EXPECT_EQ(rig.run(24, setTime("2024-02-29 09:00:00")), "4.4002");
    EXPECT_EQ(rig.run(24, setTime("2024-03-01 09:10:00")), "0.0");
    EXPECT_EQ(rig.openShift(), "0.0");
    EXPECT_EQ(rig.openShift(), "1.1002");
    EXPECT_EQ(rig.send(22).value("200001"), "2024-03-01 09:10:00");
    EXPECT_EQ(rig.run(18, pa("11", 7, cashier + pa("1205", 4, "8") + pa("1062", 4, "1"))), "1.1002");
    EXPECT_EQ(rig.money(2, "0.01"), "1.1007");
    for (const char* const number : {"9", "4294967295"})
        EXPECT_EQ(rig.run(16, pa("100000", 7, pa("1040", 4, number))), "1.1005");
    rig.device.setPaper(false);
    EXPECT_EQ(rig.run(8, sale), "3.8");
    rig.device.setPaper(true);
    rig.clock.advance(24 * 3600 * 1000 + 1000);
    EXPECT_EQ(rig.run(8, sale), "2.22");
    const XmlReply shift = rig.send(44);
    const QStringList values{
        shift.value("ShiftState"), shift.value("ShiftOvertime"), shift.value("1038"), shift.value("1042")};
    EXPECT_EQ(values, (QStringList{"1", "1", "1", "0"}));
    EXPECT_EQ(rig.run(6, pa("5", 7, cashier)), "0.0");
    EXPECT_EQ(rig.run(18, pa("11", 7, cashier + pa("1205", 4, "8") + pa("1062", 4, "64"))), "1.1004");
    EXPECT_EQ(rig.run(18, pa("11", 7, cashier + pa("1205", 4, "8") + pa("1062", 4, "18"))), "0.0");
    rig.device.tape().clear();
    EXPECT_EQ(rig.run(28), "0.0");
    EXPECT_TRUE(rig.device.tape().text().contains("СНО: УСН доход, ЕСХН"));
    rig.clock.advance(31LL * 24 * 3600 * 1000);
    EXPECT_EQ(rig.openShift(), "4.4004");
}

// Over HEX a year has two digits: a host that starts the register with its own time gives it back as it was.
TEST(XmlService, ClockHasTheYearsThatBothProtocolsTell)
{
    const std::pair<const char*, const char*> times[]{
        {"2099-12-31 23:59:00", "0.0"}, {"2100-01-01 00:00:00", "1.1004"}, {"9999-12-31 23:59:00", "1.1004"}};
    for (const auto& [time, verdict] : times) {
        XmlRig rig;
        EXPECT_EQ(rig.run(24, pa("200001", 7, pa("DateTime", 5, time))), verdict) << time;
        Rig hex;
        const Reply told = hex.parse(rig.exchange(hex.frame({0xA7, {}})).bytes);
        EXPECT_EQ(hex.parse(rig.exchange(hex.frame({0x00, told.fields})).bytes).code, 0) << time;
    }
}

TEST(XmlService, StatusAndCountersFollowTheRegister)
{
    XmlRig rig;
    rig.openShift();
    rig.money(1, "500.00");
    rig.money(2, "20.00");
    ASSERT_EQ(rig.run(8, receipt(position("10.00", "1.000", "10.00"), "4.00", "6.00")), "0.0");
    const XmlReply state = rig.send(2);
    const QList<std::pair<const char*, QString>> expected{{"PaperWidth", "44"},
        {"1013", "00103000000012345678"}, {"LifePhase", "3"}, {"ShiftState", "1"}, {"lastDocNumber", "3"},
        {"lastDocDateTime", "2024-03-01 09:00:00"}, {"1041", "9999078900001234"},
        {"ExpirationDate", "2025-06-01 00:00:00"}, {"1097", "2"}, {"1116", "2"},
        {"1098", "2024-03-01 09:00:00"}, {"1053", "0"}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(state.value(key), value) << key;
    EXPECT_EQ(rig.send(58).value("1037"), "0000000001012345");
    const auto block = [&rig](const QString& tag) {
        const QString data = rig.send(40).element("ResponseData");
        return data.mid(data.indexOf("<pa n=\"" + tag + "\"")).left(data.contains("n=\"" + tag) ? -1 : 0);
    };
    const QString sales = pa("1129", 7,
        pa("1135", 4, "1") + pa("1201", 2, "10.00") + pa("1136", 2, "4.00") + pa("1138", 2, "6.00")
            + pa("1218", 2, "0.00") + pa("1219", 2, "0.00") + pa("1220", 2, "0.00"));
    EXPECT_TRUE(block("1194").startsWith("<pa n=\"1194\" t=\"7\">" + sales)) << block("1194").toStdString();
    EXPECT_TRUE(
        block("MOCounters")
            .startsWith(pa("MOCounters", 7,
                pa("MOIncomeCount", 4, "1") + pa("MOIncomeSum", 2, "500.00") + pa("MOOutcomeCount", 4, "1")
                    + pa("MOOutcomeSum", 2, "20.00") + pa("CashSumm", 2, "484.00"))));
    EXPECT_EQ(block("1157"), "");
    EXPECT_EQ(rig.set("MACRO", "KKTCounters", pa("GetCumulativeCounters", 1, "true")), "0.0");
    rig.run(6, pa("5", 7, pa("1021", 1, "Иванова")));
    rig.openShift();
    EXPECT_TRUE(block("1157").startsWith("<pa n=\"1157\" t=\"7\">" + sales));
    EXPECT_FALSE(block("1194").startsWith("<pa n=\"1194\" t=\"7\">" + sales));
}

TEST(XmlService, SettingsAreKeptWholeAndShowOnTheTape)
{
    XmlRig rig;
    const QString names
        = pa("PRN", 7, pa("PrinterHeader", 7, pa("Cliche", 1)) + pa("Printer", 7, pa("PrintWidthChars", 1)))
        + pa("IMS", 7, pa("ims-client", 7, pa("ims_session_interval_tr_sec", 4)));
    const XmlReply factory = rig.send(54, pa("200004", 7, names));
    EXPECT_EQ(factory.value("Cliche"), "ООО \"РОМАШКА\"\nМАГАЗИН № 1");
    EXPECT_EQ(factory.value("ims_session_interval_tr_sec"), "60");
    const QString header = pa("Cliche", 1, "Лавка\nу моста");
    const QList<std::pair<QString, QString>> wrong{{"Printer", header},
        {"PrinterHeader", header + pa("Clishe", 1, "x")},
        {"PrinterHeader", header + pa("PrintUserAddrInCliche", 1, "yes")},
        {"PrinterHeader", pa("Cliche", 1, "1\n2\n3\n4\n5")}, {"LogoImage", pa("Image", 1, "424d00")},
        {"Nothing", QString()}};
    for (const auto& [subsection, settings] : wrong)
        EXPECT_EQ(rig.set("PRN", subsection, settings), "1.1004") << settings.toStdString();
    EXPECT_EQ(rig.run(54, pa("200004", 7, pa("MACRO", 7, pa("OFD", 7)))), "1.1004");
    EXPECT_EQ(rig.set("IMS", "ims-client", pa("ims_session_interval_tr_sec", 4, "-1")), "1.1004");
    EXPECT_EQ(rig.send(54, pa("200004", 7, names)).value("Cliche"), factory.value("Cliche"));

    QByteArray bitmap(62, '\0');
    bitmap.replace(0, 2, "BM")
        .replace(18, 4, QByteArray::fromHex("64000000"))
        .replace(22, 4, QByteArray::fromHex("32000000"));
    EXPECT_EQ(rig.set("PRN", "PrinterHeader", header), "0.0");
    EXPECT_EQ(rig.set("PRN", "LogoImage", pa("Image", 1, bitmap.toHex())), "0.0");
    EXPECT_EQ(rig.send(54, pa("200004", 7, pa("PRN", 7, pa("LogoImage", 7, pa("Image", 1))))).value("Image"),
        bitmap.toHex());
    EXPECT_EQ(rig.run(30, pa("200003", 7, pa("NonFiscalText", 1, "‼?f0320028кот"))), "0.0");
    const QString pictures = "‼?q10000" + QString(10'000, 'x') + "\n‼?b00\n‼?q0000";
    EXPECT_EQ(rig.run(30, pa("200003", 7, pa("NonFiscalText", 1, pictures))), "0.0");
    QString page = rig.device.tape().text();
    for (const char* const shown : {"100 x 50", "Лавка", "у моста", "↔к о т"})
        EXPECT_TRUE(page.contains(shown)) << shown;
    rig.device.tape().clear();
    EXPECT_EQ(rig.set("PRN", "LogoImage", pa("PrintLogo", 1, "false")), "0.0");
    rig.openShift();
    EXPECT_FALSE(rig.device.tape().text().contains("100 x 50"));
}
