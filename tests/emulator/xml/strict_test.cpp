#include "rig.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QStringEncoder>

namespace {

const QString soldHex = QString::fromLatin1(markingCode.toHex());

QString goodsCode(const QString& inside = pa("1305", 1, "444d"))
{
    return pa("1163", 7, inside);
}

QString discount(const QString& sum)
{
    return pa("ItemDiscounts", 7, pa("Name", 1, "Скидка") + pa("Value", 2, sum));
}

const QString supplier = pa("1224", 7, pa("1171", 1, "+70000000000") + pa("1225", 1)) + pa("1222", 1)
    + pa("1226", 1, "7701234567");

QString fullReceipt()
{
    const QString marked
        = position("60.00", "3.000", "56.67")
              .replace(R"(n="1212" t="4">1<)", R"(n="1212" t="4">33<)")
              .replace("<pa n=\"PriceWith",
                  pa("2102", 4, "0") + goodsCode() + pa("2110", 4, "1") + pa("2000", 1, soldHex)
                      + pa("ItemDiscounts", 6, discount("-10.00")) + "<pa n=\"PriceWith")
              .replace(QRegularExpression("</pa>$"),
                  supplier + pa("1223", 7, pa("1044", 1, "перевод") + pa("1073", 1, "+7")) + "</pa>");
    return receipt(marked + position("10.00", "1.000", "10.00"), "170.00", "10.00",
        pa("1055", 4, "1") + pa("1008", 1, "a@b.example") + pa("1203", 1, "771234567890")
            + pa("HeaderText", 1, "‼?f0080028жирно") + pa("Footer", 1, "СДАЧА: 0.00")
            + pa("TextAfterDoc", 1, "Ждём"));
}

QString dataOf(int command)
{
    switch (command) {
    case 6:
        return pa("5", 7, pa("1021", 1, "Иванова") + pa("1203", 1, "771234567890"));
    case 8:
        return fullReceipt();
    case 18:
        return pa("11", 7, pa("1021", 1, "Иванова") + pa("1205", 4, "8") + pa("1062", 4, "1"));
    case 30:
        return pa("200003", 7, pa("NonFiscalText", 1, "‼?f0320028кот"));
    case 38:
        return pa("200007", 7,
            pa("1021", 1, "Иванова") + pa("CashSumm", 2, "1.00") + pa("MoneyOperationType", 4, "1"));
    case 54:
        return pa("200004", 7,
            pa("OFD", 7, pa("OFD", 7, pa("OFD_Host", 1) + pa("OFD_Port", 1)))
                + pa("PRN", 7, pa("QR", 7, pa("QRFastPrint", 1))));
    case 56:
        return pa("200005", 7, pa("OFD", 7, pa("OFD", 7, pa("OFD_Host", 1, "a.b") + pa("OFD_Port", 1, "7"))));
    case 76:
        return pa("200017", 7,
            pa("1023", 3, "1.000") + pa("2000", 1, soldHex) + pa("2003", 4, "1") + pa("2102", 4, "0")
                + pa("2108", 4, "0") + goodsCode());
    default:
        return {};
    }
}

/// A request that is good but for one change.
struct Row
{
    int command;
    /// A regular expression and what stands in its place.
    const char* from;
    const char* to;
    const char* error;
    const char* reason;
    /// What a lenient register answers.
    const char* lenient = "0.0";
};

// clang-format off
const Row rows[] = {
    // Envelope
    {44, "(<RequestBody>.*</RequestBody>)\\s*(<RequestData>.*</RequestData>)", "\\2\\1", "5.5002", "RequestData before RequestBody"},
    {44, "(<msgFFDVer>4</msgFFDVer>)(<msgContVer>1</msgContVer>)", "\\2\\1", "5.5002", "msgContVer before msgFFDVer"},
    {44, "<Command>", "<Command a=\"1\">", "5.5002", "attributes of Command"},
    {44, "<ArmRequest>", "<ArmRequest xmlns=\"urn:a\">", "5.5002", "attributes of ArmRequest"},
    {44, "^<\\?xml[^>]*>\\s*", "", "5.5002", "no XML declaration"},
    {44, "encoding=\"UTF-8\"", "encoding=\"ISO-8859-1\"", "5.5002", "the declaration is not that of XML 1.0 in UTF-8"},
    {44, " encoding=\"UTF-8\"", "", "5.5002", "the declaration is not that of XML 1.0 in UTF-8"},
    {44, "<ArmRequest>", "<!DOCTYPE ArmRequest [<!ENTITY n \"44\">]><ArmRequest>", "5.5002", "DOCTYPE"},
    {44, "<Command>44", "<Command>&#52;&#x34;", "0.0", ""},
    {44, "<Command>44", "<Command>&n;", "5.5002", "Entity 'n' not declared.", "5.5002"},
    {30, "кот", "&amp;&lt;&gt;&quot;&apos;&#1078;", "0.0", ""},
    {30, "кот", "&nbsp;", "5.5003", "Entity 'nbsp' not declared.", "5.5003"},
    {44, "<!\\[CDATA\\[", "44<![CDATA[", "5.5002", "RequestData is no CDATA section", "5.5002"},
    {44, "<!\\[CDATA\\[\\]\\]>", "", "5.5002", "RequestData is not one CDATA section"},
    {44, "(CDATA\\[)", "\\1\n ", "5.5002", "blanks in the place of parameters"},
    {30, "(NonFiscalText)", "\\1]]><![CDATA[", "5.5002", "RequestData is not one CDATA section"},
    {30, "<!\\[CDATA\\[", "<![CDATA[<?xml version=\"1.0\"?>", "5.5002", "a declaration in the parameters"},
    {44, "<RequestId>\\{", "<RequestId>{-", "5.5002", "RequestId: no UUID of 38 characters with its braces"},
    {44, "\\{(.*)\\}</RequestId>", "0\\10</RequestId>", "5.5002", "RequestId: no UUID of 38 characters with its braces"},
    {44, "<Command>44", "<Command> +44 ", "5.5002", "Command: no number of a command"},
    {44, "\\}</RequestId>", "}\n</RequestId>", "5.5002", "RequestId: no UUID of 38 characters with its braces"},
    {44, "<Command>44", "<Command>44\n", "5.5002", "Command: no number of a command"},
    {44, "version=\"1.0\"", "version=\"1.1\"", "5.5002", "Unsupported XML version.", "5.5002"},
    {30, "кот", "к\x07", "5.5002", "Invalid XML character.", "5.5002"},
    {44, "</msgContVer>", "</msgContVer>x", "5.5002", "text between the elements"},
    {44, "</RequestBody>", "</RequestBody>x", "5.5002", "text between the elements"},
    {44, "</msgContVer>", "</msgContVer><!-- -->", "5.5002", "a comment"},
    {44, "<Command>44", "<Command>4<!-- -->4", "5.5002", "a comment"},
    {30, "<pa n=\"NonFiscalText\"", "<!-- --><pa n=\"NonFiscalText\"", "5.5002", "a comment"},
    {44, "<RequestBody>", "<?a b?><RequestBody>", "5.5002", "a processing instruction"},
    {44, ">13.0<", ">0.0<", "5.5001", "ProtocolVersion: no version"},
    // Order
    {8, "(<pa n=\"1030\"[^/]*/pa>)(<pa n=\"1079\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 1059: 1079 before 1030"},
    {8, "(<pa n=\"1054\"[^/]*/pa>)(<pa n=\"DoNotPrint\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 3: DoNotPrint before 1054"},
    {8, "(<pa n=\"1203\"[^/]*/pa>)(.*)(<pa n=\"Footer\")", "\\2\\1\\3", "5.5003", "pa 3: HeaderText before 1203"},
    {8, "(<pa n=\"1203\"[^/]*/pa>)(<pa n=\"1055\"[^/]*/pa>)", "\\1\\1\\2\\2", "0.0", ""},
    {8, "(<pa n=\"1008\"[^/]*/pa>)", "\\1<pa n=\"1256\" t=\"7\"><pa n=\"1227\" t=\"1\"></pa><pa n=\"1228\" t=\"1\"></pa></pa>\\1", "0.0", ""},
    {8, "(<pa n=\"1203\"[^/]*/pa>)(<pa n=\"1055\"[^/]*/pa>)", "\\2\\1", "1.1004", "pa 3: 1055 is the last requisite before HeaderText and Footer"},
    {6, "771234567890", "", "1.1004", "pa 5: 1203 is empty"},
    {6, "<pa n=\"1203\"[^/]*/pa>", "", "0.0", ""},
    {8, "771234567890", "", "0.0", ""},
    {18, "n=\"1205\" t=\"4\">8", "n=\"1205\" t=\"4\">8", "1.1002", "18: not in this state: the shift is open, no document is open", "1.1002"},
    {8, "(n=\"1199\" t=\"4\">)2", "\\113", "1.1004", "pa 1059: a tax rate that is none of 0 to 12", "1.1004"},
    {18, "n=\"1205\" t=\"4\">8", "n=\"1205\" t=\"4\">9", "1.1004", "pa 11: 1205 is 8", "1.1002"},
    // Form of the tree
    {8, "n=\"1214\" t=\"4\">4", "n=\"1214\" t=\"4\">04", "5.5003", "pa 1214: zeros before a number"},
    {8, "n=\"1216\" t=\"2\">0.00", "n=\"1216\" t=\"2\">00.00", "5.5003", "pa 1216: zeros before a number"},
    {76, "n=\"1023\" t=\"3\">1.000", "n=\"1023\" t=\"3\">01.000", "5.5003", "pa 1023: zeros before a number"},
    {8, "n=\"1030\" t=\"1\"", "n=\"1030\" t=\"01\"", "5.5003", "pa 1030: t is no plain number"},
    {30, "n=\"200003\" t=\"7\"", "n=\"200003\" t=\" +7 \"", "5.5003", "pa 200003: t is no plain number"},
    {8, "n=\"1079\" t=\"2\"", "t=\"2\" n=\"1079\"", "0.0", ""},
    {8, "<pa n=\"1030\"", "<pa xmlns=\"urn:a\" n=\"1030\"", "5.5003", "pa 1030: a namespace"},
    {30, "<pa n=\"200003\"(.*)</pa>\\]\\]", "<x:pa xmlns:x=\"urn:a\" n=\"200003\"\\1</x:pa>]]", "5.5003", "pa 200003: a namespace"},
    {8, "(<pa n=\"1044\"[^/]*/pa>)(<pa n=\"1073\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 1223: 1073 before 1044"},
    {38, "(<pa n=\"1021\"[^/]*/pa>)(<pa n=\"CashSumm\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 200007: CashSumm before 1021"},
    {76, "(<pa n=\"2003\"[^/]*/pa>)(<pa n=\"2102\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 200017: 2102 before 2003"},
    {18, "(<pa n=\"1021\"[^/]*/pa>)(<pa n=\"1205\"[^/]*/pa>)", "\\2\\1", "5.5003", "pa 11: 1205 before 1021", "1.1002"},
    {8, "<pa n=\"Footer\"[^/]*/pa>", "", "1.1004", "pa 3: no Footer"},
    {8, "(<pa n=\"Footer\"[^/]*/pa>)", "\\1\\1", "1.1004", "pa 3: Footer twice"},
    {8, "СДАЧА: ", "Сдача ", "1.1004", "pa 3: Footer is \"СДАЧА: \" and the change"},
    {8, "СДАЧА: 0.00", "СДАЧА: 1", "1.1004", "pa 3: Footer is \"СДАЧА: \" and the change"},
    {8, "СДАЧА: 0.00", "СДАЧА: -0.00", "0.0", ""},
    {8, "(<pa n=\"HeaderText\"[^/]*/pa>)", "\\1\\1", "1.1004", "pa 3: HeaderText twice"},
    {8, "(<pa n=\"1163\".*?/pa></pa>)", "\\1\\1", "1.1004", "pa 1059: 1163 twice"},
    {8, "(<pa n=\"2110\"[^/]*/pa>)", "\\1\\1", "1.1004", "pa 1059: 2110 twice"},
    // Position
    {8, "<pa n=\"1226\"[^/]*/pa>", "", "1.1004", "pa 1059: 1224, 1222 and 1226 come together"},
    {8, "<pa n=\"1222\"[^/]*/pa>", "", "1.1004", "pa 1059: 1224, 1222 and 1226 come together"},
    {8, "(<pa n=\"1226\" t=\"1\">)[^<]*", "\\1", "0.0", ""},
    {8, "<pa n=\"1224\".*?/pa></pa><pa n=\"1222\" t=\"1\"></pa>", "", "1.1004", "pa 1059: 1224, 1222 and 1226 come together"},
    {8, "<pa n=\"1225\"[^/]*/pa>", "", "1.1004", "pa 1224: no 1225", "1.1004"},
    {8, "<pa n=\"1224\".*?/pa></pa>", "", "1.1004", "pa 1059: 1224, 1222 and 1226 come together"},
    {8, "(<pa n=\"1223\" t=\"7\">).*?/pa></pa>", "\\1</pa>", "1.1004", "pa 1059: 1223 is empty"},
    {8, "n=\"1044\"", "n=\"1045\"", "1.1004", "pa 1223: 1045 is unknown"},
    {8, "n=\"1044\" t=\"1\">[^<]*", "n=\"1044\" t=\"4\">5", "1.1004", "pa 1044: type 4 instead of 1"},
    {8, "(60.00)(</pa>.*<pa n=\"ItemDiscounts\" t=\"6\">).*?</pa></pa></pa>(<pa n=\"Price[^>]*>)56.67", "\\1\\2</pa>\\3\\1", "1.1004", "pa 1059: ItemDiscounts has one record", "1.1003"},
    {8, "-10.00", "-5.00</pa></pa><pa n=\"ItemDiscounts\" t=\"7\"><pa n=\"Name\" t=\"1\">Скидка</pa><pa n=\"Value\" t=\"2\">-5.00", "1.1004", "pa 1059: ItemDiscounts has one record"},
    {8, "-10.00(.*<pa n=\"Price[^>]*>)56.67", "0.00\\160.00", "1.1004", "pa 1059: a discount of 0.00", "1.1003"},
    {8, "Скидка", "Акция", "1.1004", "pa 1059: the name of a discount is \"Скидка\""},
    {8, "(n=\"1212\" t=\"4\">)1<", "\\10<", "1.1004", "pa 1059: 1212 is 0"},
    {8, "n=\"1305\"", "n=\"1310\"", "1.1004", "pa 1059: 1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text"},
    {8, "n=\"1305\" t=\"1\">444d", "n=\"1305\" t=\"4\">44", "1.1004", "pa 1059: 1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text"},
    {8, "n=\"2110\" t=\"4\">1", "n=\"2110\" t=\"4\">2", "1.1004", "pa 1059: 2110 is 1 or 255 in a sale and 3 in a return"},
    {8, "(n=\"2110\" t=\"4\">)1", "\\1255", "0.0", ""},
    {8, "(n=\"1054\" t=\"4\">)1", "\\12", "1.1004", "pa 1059: 2110 is 1 or 255 in a sale and 3 in a return", "1.1004"},
    {8, "(n=\"2110\" t=\"4\">)1(.*n=\"1054\" t=\"4\">)1", "\\13\\22", "0.0", ""},
    {8, "(n=\"2110\" t=\"4\">)1(.*n=\"1054\" t=\"4\">)1", "\\14\\22", "1.1004", "pa 1059: 2110 is 1 or 255 in a sale and 3 in a return"},
    {8, "(n=\"1216\" t=\"2\">)0.00", "\\1-0.00", "5.5003", "pa 1216: -0.00"},
    // Print sequences
    {8, "(n=\"TextAfterDoc\" t=\"1\">)[^<]*", "\\1", "1.1004", "pa 3: TextAfterDoc is empty"},
    {8, "0080028", "0050028", "1.1004", "HeaderText: no such print sequence"},
    {30, "0320028", "0000028", "1.1004", "NonFiscalText: no such print sequence"},
    {30, "0320028", "0320030", "1.1004", "NonFiscalText: no such print sequence"},
    // Marking check
    {76, "n=\"2102\" t=\"4\">0", "n=\"2102\" t=\"4\">1", "1.1004", "pa 200017: 2102 is 0"},
    {76, "n=\"1305\"", "n=\"5\"", "1.1004", "pa 200017: 1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text"},
    {76, "n=\"1305\" t=\"1\">444d", "n=\"1305\" t=\"4\">44", "1.1004", "pa 200017: 1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text"},
    {76, "444d", "44zz", "1.1004", "pa 200017: 1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text"},
    // Settings
    {54, "(<pa n=\"200004\" t=\"7\">).*(</pa>\\]\\])", "\\1<pa n=\"PRN.QR.QRFastPrint\" t=\"1\"></pa>\\2", "1.1004", "pa PRN.QR.QRFastPrint: a path instead of a name"},
    {54, "n=\"PRN\" t=\"7\"", "n=\"PRN\" t=\"6\"", "1.1004", "pa PRN: no structure"},
    {54, "<pa n=\"QRFastPrint\" t=\"1\"></pa>", "", "1.1004", "pa QR: empty"},
    {54, "(n=\"QRFastPrint\" t=\"1\">)", "\\1true", "1.1004", "pa QRFastPrint: a value in a question"},
    {56, "(<pa n=\"OFD_Host\"[^/]*/pa>)", "\\1\\1", "1.1004", "pa OFD: OFD_Host twice"},
    {56, "(<pa n=\"OFD\" t=\"7\">)<pa n=\"OFD\".*</pa></pa></pa>(</pa>\\]\\])", "\\2", "1.1004", "pa 200005: empty"},
};
// clang-format on

struct Judged
{
    std::string error;
    emulator::RefusedRequest refused;
    QByteArray request;
};

Judged judge(const Row& row, bool lenient)
{
    XmlRig rig;
    rig.line.setLenient(lenient);
    rig.openShift();
    rig.send(76, dataOf(76));
    const QString good = QString::fromUtf8(rig.request(row.command, dataOf(row.command)));
    const QRegularExpression from(
        QString::fromUtf8(row.from), QRegularExpression::DotMatchesEverythingOption);
    EXPECT_TRUE(good.contains(from)) << row.from;
    QString changed = good;
    changed.replace(from, QString::fromUtf8(row.to));
    const QByteArray request = changed.toUtf8();
    const std::string error = rig.exchange(request).verdict();
    const auto& refused = rig.device.refusals().all();
    EXPECT_EQ(refused.size(), error == "0.0" ? 0 : 1) << row.from;
    return {error, refused.isEmpty() ? emulator::RefusedRequest() : refused.constLast(), request};
}

} // namespace

TEST(XmlStrict, RefusesWithAReasonWhatALenientRegisterTakes)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.from) + " -> " + row.to);
        const Judged judged = judge(row, false);
        EXPECT_EQ(judged.error, row.error);
        EXPECT_EQ(judged.refused.reason, row.reason);
        if (judged.error != "0.0") {
            EXPECT_EQ(judged.refused.error, row.error);
            EXPECT_EQ(judged.refused.request, judged.request);
        }
        EXPECT_EQ(judge(row, true).error, row.lenient);
    }
}

namespace {

QByteArray encoded(const QByteArray& request, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding, QStringEncoder::Flag::WriteBom);
    return encoder(QString::fromUtf8(request));
}

} // namespace

TEST(XmlStrict, RefusesOtherEncodingsOnEveryLine)
{
    using Choice = emulator::ProtocolChoice;
    using Encoding = QStringConverter::Encoding;
    const std::pair<Encoding, const char*> encodings[]
        = {{Encoding::Utf8, "a byte order mark before the document"},
            {Encoding::Utf16LE, "UTF-16 instead of UTF-8"}, {Encoding::Utf16BE, "UTF-16 instead of UTF-8"}};
    for (const Choice choice : {Choice::Auto, Choice::Xml, Choice::Hex}) {
        for (const auto& [encoding, reason] : encodings) {
            for (const bool lenient : {false, true}) {
                XmlRig rig(choice);
                rig.line.setLenient(lenient);
                // A line that takes both stood at the other protocol before.
                rig.exchange("\x05");
                const QByteArray request = encoded(rig.request(44, pa("x", 1, "Иванова")), encoding);
                QByteArray answer;
                for (const char byte : request)
                    answer += rig.exchange(QByteArray(1, byte)).bytes;
                const bool isTaken = lenient && choice != Choice::Hex && encoding == Encoding::Utf8;
                EXPECT_EQ(XmlReply{answer}.verdict(), isTaken ? "1.1004" : "5.5002") << reason;
                EXPECT_EQ(XmlReply{answer}.element("RequestId"), rig.id());
                const QString why = rig.device.refusals().all().value(0).reason;
                EXPECT_TRUE(isTaken || why == (choice == Choice::Hex ? "the register speaks HEX" : reason))
                    << why.toStdString();
                Rig hex;
                EXPECT_TRUE(choice == Choice::Hex || rig.run(44) == "0.0");
                const QByteArray next = rig.exchange(hex.frame({0xA6, {}})).bytes;
                EXPECT_TRUE(choice == Choice::Xml || hex.parse(next).code == 0);
            }
        }
    }
}

TEST(XmlStrict, RefusesBytesThatAreNoUtf8)
{
    XmlRig rig;
    const QByteArray latin = rig.request(4, pa("2", 7, pa("1021", 1, "*"))).replace('*', '\xC8');
    EXPECT_EQ(rig.exchange(latin).verdict(), "5.5002");
}

TEST(XmlStrict, SumsFitToTheKopeck)
{
    const QString weighed = position("139.90", "1.254", "139.90").repeated(2);
    const QString third = position("0.25", "0.500", "0.25").repeated(2);
    const struct
    {
        QString positions;
        const char* cash;
        const char* card;
        const char* strict;
        const char* lenient;
    } cases[] = {
        // Rounded together and each by itself.
        {weighed, "350.87", "0.00", "0.0", "0.0"},
        {weighed, "350.86", "0.00", "0.0", "0.0"},
        {weighed, "350.85", "0.00", "1.1003", "0.0"},
        {weighed, "0.00", "350.87", "0.0", "1.1003"},
        {weighed, "0.02", "350.85", "0.0", "0.0"},
        {third, "0.26", "0.00", "0.0", "0.0"},
        {third, "0.24", "0.00", "1.1003", "1.1003"},
        {position("10.00", "1.000", "10.00").repeated(10), "99.95", "0.00", "1.1003", "0.0"},
        {position("10.00", "1.000", "10.01"), "10.01", "0.00", "1.1004", "0.0"},
        // A discount of less than half a kopeck is not sent, but the price for the half of a piece shows it.
        {position("10.00", "0.500", "10.01"), "5.00", "0.00", "0.0", "1.1003"},
        {position("10.00", "1.000", "10.00"), "-0.00", "10.00", "0.0", "0.0"},
    };
    for (const auto& c : cases) {
        for (const bool lenient : {false, true}) {
            XmlRig rig;
            rig.line.setLenient(lenient);
            rig.openShift();
            const QString data = receipt(c.positions, c.cash, c.card);
            EXPECT_EQ(rig.run(8, data), lenient ? c.lenient : c.strict) << data.toStdString();
            EXPECT_GE(rig.device.state().drawer.cash, 0);
        }
    }
}

TEST(XmlStrict, ExpiredDriveChecksNoMarkingCode)
{
    XmlRig rig;
    rig.clock.advance(500LL * 24 * 3600 * 1000);
    EXPECT_EQ(rig.run(76, dataOf(76)), "2.2005");
    rig.line.setLenient(true);
    EXPECT_EQ(rig.run(76, dataOf(76)), "0.0");
}
