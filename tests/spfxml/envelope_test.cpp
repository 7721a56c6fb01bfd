#include "spfxml/envelope.h"

#include <gtest/gtest.h>

namespace envelope = spfxml::envelope;

namespace {

TEST(Envelope, requestsAreTheseBytes)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9));
    const std::pair<envelope::Request, const char*> table[] = {
        {{"13.0", "{1}", time, 24, "<pa n=\"200001\" t=\"7\">\n <pa n=\"a\" t=\"1\">Ёж &lt;</pa>\n</pa>\n"},
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmRequest>\n <RequestBody>\n"
            "  <ProtocolLabel>OFDFNARMUKM</ProtocolLabel>\n  <ProtocolVersion>13.0</ProtocolVersion>\n"
            "  <RequestId>{1}</RequestId>\n  <msgFFDVer>4</msgFFDVer>\n  <msgContVer>1</msgContVer>\n"
            "  <DateTime>2026-03-01 14:05:09</DateTime>\n  <Command>24</Command>\n </RequestBody>\n"
            " <RequestData><![CDATA[<pa n=\"200001\" t=\"7\">\n <pa n=\"a\" t=\"1\">Ёж &lt;</pa>\n</pa>\n"
            "]]></RequestData>\n</ArmRequest>\n"},
        // No parameters, no version, and an id that is none of ours.
        {{"", "<&]]>", time, 8, ""},
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmRequest>\n <RequestBody>\n"
            "  <ProtocolLabel>OFDFNARMUKM</ProtocolLabel>\n  <ProtocolVersion></ProtocolVersion>\n"
            "  <RequestId>&lt;&amp;]]&gt;</RequestId>\n  <msgFFDVer>4</msgFFDVer>\n"
            "  <msgContVer>1</msgContVer>\n  <DateTime>2026-03-01 14:05:09</DateTime>\n"
            "  <Command>8</Command>\n </RequestBody>\n <RequestData><![CDATA[]]></RequestData>\n"
            "</ArmRequest>\n"},
    };
    for (const auto& [request, bytes] : table)
        EXPECT_EQ(envelope::build(request).toStdString(), bytes);
    // An end inside the data would end them, half a character would not be UTF-8.
    const QString data = "a]]>b]]]>" + QString(QChar(0xd83d));
    EXPECT_TRUE(envelope::build({{}, {}, time, 2, data})
                    .contains("<![CDATA[a]]]]><![CDATA[>b]]]]]><![CDATA[>?]]></RequestData>"));
    // Neither spoils what stands behind it when it is in the head.
    const QString version = QChar(0xdc00) + QStringLiteral("1\r3") + QChar(0xd83d);
    EXPECT_TRUE(envelope::build(
        {version, "{1}", time, 2,
            {}}).contains("<ProtocolVersion>?1&#xd;3?</ProtocolVersion>\n  <RequestId>{1}</RequestId>"));
}

/// What an answer is found to say, on one line.
std::string reading(const QByteArray& answer)
{
    envelope::Flaw flaw;
    const auto document = envelope::parse(answer, &flaw);
    if (!document) {
        EXPECT_FALSE(flaw.reason.isEmpty());
        return QStringLiteral("flaw %1:%2").arg(flaw.line).arg(flaw.column).toStdString();
    }
    envelope::BadField badField;
    const auto verdict = envelope::verdict(*document, &badField);
    if (!verdict)
        return "bad " + badField.tag.toStdString() + '=' + badField.text.toStdString();
    if (verdict->isSuccess)
        return "success " + envelope::data(*document).toStdString();
    return QStringLiteral("failure %1/%2 %3")
        .arg(verdict->errorCategory)
        .arg(verdict->errorCode)
        .arg(verdict->errorDescription)
        .toStdString();
}

TEST(Envelope, answersSayThis)
{
    const std::pair<const char*, const char*> table[] = {
        {"<ArmResponse><Result>0</Result><ResponseData><![CDATA[<pa/>]]></ResponseData></ArmResponse>",
            "success <pa/>"},
        {"<?xml version='1.0' encoding='UTF-8'?>\n<A><ResponseData>&lt;Ё/></ResponseData><B><Result>0</Result>"
         "<Result>1</Result></B></A>",
            "success <Ё/>"},
        {"<A><Result>0</Result><ErrorCode>x</ErrorCode></A>", "success "},
        {"<A><Result>00</Result><ErrorCategory>2</ErrorCategory><ErrorCode>-7</ErrorCode></A>",
            "failure 2/-7 "},
        {"<A><Result>x</Result><ErrorDescription>Сбой</ErrorDescription><ErrorCode>8</ErrorCode>"
         "<ErrorCategory> 3</ErrorCategory></A>",
            "failure 3/8 Сбой"},
        {"<A><Result/></A>", "bad Result="},
        {"<A><Result>1</Result><ErrorCode>x</ErrorCode></A>", "bad ErrorCategory="},
        {"<A><Result>1</Result><ErrorCategory>1</ErrorCategory><ErrorCode>2147483648</ErrorCode></A>",
            "bad ErrorCode=2147483648"},
        {"<A>\n<B></A>", "flaw 2:7"},
    };
    for (const auto& [answer, expected] : table)
        EXPECT_EQ(reading(answer), expected) << answer;

    // A depth that no register needs would cost the host its stack.
    const auto nested
        = [](int depth) { return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth); };
    EXPECT_EQ(reading(nested(256)), "bad Result=");
    EXPECT_EQ(reading(nested(257)), "flaw 0:0");
    EXPECT_FALSE(envelope::parse(QString::fromLatin1(nested(257))));
    // Nor is it to be had behind a prefix that is not declared, or in an entity without brackets.
    EXPECT_EQ(reading("<x:a>" + nested(256) + "</x:a>"), "flaw 0:0");
    const QByteArray entity = nested(257).replace('<', "&#60;");
    EXPECT_EQ(reading("<!DOCTYPE a [<!ENTITY e '" + entity + "'>]><a>&e;</a>"), "flaw 0:0");
}

TEST(Envelope, anAnswerIsWholeWithItsEndAndItsId)
{
    const std::pair<const char*, bool> table[] = {{"x{1}</ArmResponse>\n", true}, {"</ArmResponse>{1}", true},
        {"{1}</ArmResponse", false}, {"{2}</ArmResponse>", false}, {"", false}};
    for (const auto& [answer, isWhole] : table)
        EXPECT_EQ(envelope::isWhole(answer, "{1}"), isWhole) << answer;
}

} // namespace
