#include "xml/strictrows.h"
#include "xmlrig.h"

#include <gtest/gtest.h>
#include <QStringEncoder>

namespace {

QString fullReceipt()
{
    const QString marked
        = markedPosition(pa("1224", 7, pa("1171", 1, "+70000000000") + pa("1225", 1)) + pa("1222", 1)
            + pa("1226", 1, "7701234567") + pa("1223", 7, pa("1044", 1, "перевод") + pa("1073", 1, "+7")));
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
        return markingCheck();
    default:
        return {};
    }
}

/// Error and refusal of a request that is changed as the row says.
std::pair<std::string, emulator::RefusedRequest> judge(const StrictRow& row, bool lenient)
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
    const QStringList tape = rig.device.tape().lines();
    const XmlReply reply = rig.exchange(request);
    const std::string error = reply.verdict();
    const auto& refused = rig.device.refusals().all();
    EXPECT_EQ(refused.size(), error == "0.0" ? 0 : 1);
    EXPECT_TRUE(refused.isEmpty() || refused.constLast().request == request);
    const QString id = reply.element("RequestId");
    EXPECT_TRUE(reply.isWhole() && request.contains(id.toUtf8()) && (error == "5.5002" || !id.isEmpty()));
    // A refusal leaves nothing behind.
    EXPECT_TRUE(
        error == "0.0" || (rig.device.tape().lines() == tape && rig.device.drive().last().number == 2));
    EXPECT_FALSE(rig.device.document().isOpen());
    EXPECT_EQ(rig.device.state().shift.counters.cancelled, 0);
    return {error, refused.isEmpty() ? emulator::RefusedRequest() : refused.constLast()};
}

} // namespace

TEST(XmlStrict, RefusesWithAReasonWhatALenientRegisterTakes)
{
    for (const StrictRow& row : strictRows) {
        SCOPED_TRACE(std::string(row.from) + " -> " + row.to);
        const auto [error, refused] = judge(row, false);
        EXPECT_EQ(error, row.error);
        EXPECT_EQ(refused.reason.toStdString(), row.reason);
        EXPECT_EQ(refused.error, error == "0.0" ? "" : row.error);
        EXPECT_EQ(judge(row, true).first, row.lenient);
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
    const std::tuple<QString, const char*, const char*, const char*, const char*> cases[] = {
        // Rounded together and each by itself.
        {weighed, "350.87", "0.00", "0.0", "0.0"},
        {weighed, "350.86", "0.00", "0.0", "0.0"},
        {weighed, "350.85", "0.00", "1.1003", "0.0"},
        {weighed, "0.00", "350.87", "0.0", "1.1003"},
        {weighed, "0.02", "350.85", "0.0", "0.0"},
        {third, "0.26", "0.00", "0.0", "0.0"},
        {third, "0.25", "0.00", "0.0", "0.0"},
        {third, "0.00", "0.25", "0.0", "1.1003"},
        {third, "0.24", "0.00", "1.1003", "1.1003"},
        {position("10.00", "1.000", "10.00").repeated(10), "99.95", "0.00", "1.1003", "0.0"},
        {position("10.00", "1.000", "10.01"), "10.01", "0.00", "1.1004", "0.0"},
        // A discount of less than half a kopeck is not sent, but the price for the half of a piece shows it.
        {position("10.00", "0.500", "10.01"), "5.00", "0.00", "0.0", "1.1003"},
        {position("10.00", "1.000", "10.00"), "-0.00", "10.00", "0.0", "0.0"},
    };
    for (const auto& [positions, cash, card, strictError, lenientError] : cases) {
        for (const bool lenient : {false, true}) {
            XmlRig rig;
            rig.line.setLenient(lenient);
            rig.openShift();
            const QString data = receipt(positions, cash, card);
            EXPECT_EQ(rig.run(8, data), lenient ? lenientError : strictError) << data.toStdString();
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
