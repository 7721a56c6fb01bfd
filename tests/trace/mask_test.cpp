#include "frames.h"
#include "trace/mask.h"
#include "trace/meaning.h"

#include <gtest/gtest.h>

namespace {

using namespace frames;
using trace::Direction;

QByteArray leaf(const char* name, const char* text)
{
    return "<pa n=\"" + QByteArray(name) + "\" t=\"1\">" + text + "</pa>";
}

/// Data as text in which the signs of the markup are escaped.
QByteArray escaped(QByteArray document)
{
    const qsizetype start = document.indexOf("<![CDATA[");
    const qsizetype end = document.indexOf("]]>");
    const QString tree = QString::fromUtf8(document.mid(start + 9, end - start - 9)).toHtmlEscaped();
    return document.left(start) + tree.toUtf8() + document.mid(end + 3);
}

// One after the other, as on one line.
const QList<std::tuple<Direction, QByteArray, QByteArray>> maskRows{
    {Direction::ToRegister, request(' ', "20", "2,,\x88\xA2\xA0 \x80. P,772100000040,,1,+79991234567,0,"),
        request(' ', "20", "2,,\x95\xE5\xE5 \x95. X,000000000000,,1,+00000000000,0,")},
    {Direction::ToRegister, request(' ', "6B", "Ира,7721,"), request(' ', "6B", "Ххх,0000,")},
    {Direction::ToRegister, request(' ', "3C", "1,,,,,,,,+7495,ООО Я,77,"),
        request(' ', "3C", "1,,,,,,,,+0000,ХХХ Х,00,")},
    {Direction::ToRegister, request(' ', "3C", "1,Оп,+79,Банк,Пер. 7,+7,7721,+74,,,,"),
        request(' ', "3C", "1,Хх,+00,Хххх,Ххх. 0,+0,0000,+00,,,,")},
    {Direction::ToRegister, request(' ', "21", "\x84\xE0. \x8D\xA8\xAA 79,0,"),
        request(' ', "21", "\x95\xE5. \x95\xE5\xE5 00,0,")},
    {Direction::ToRegister, request(' ', "24", "2,2,60,4,CARD79,"), request(' ', "24", "2,2,60,4,XXXX00,")},
    {Direction::ToRegister, request(' ', "29", "5,1,card:79,"), request(' ', "29", "5,1,xxxx:00,")},
    {Direction::ToRegister, request(' ', "30", "\x95,46,1.000,2.00,,,,,,,,RU1,1,0,,,030,010126,N1,A9,"),
        request(' ', "30", "\x95,46,1.000,2.00,,,,,,,,RU1,1,0,,,030,010126,N1,X0,")},
    {Direction::ToRegister, request(' ', "61", "\x88,77,"), request(' ', "61", "\x95,00,")},
    {Direction::ToRegister, request(' ', "A2", "31,0,Abc1,"), request(' ', "A2", "31,0,Xxx0,")},
    {Direction::ToRegister, request(' ', "A2", "20,0,Abc1,"), request(' ', "A2", "20,0,Abc1,")},
    {Direction::ToRegister, request(' ', "A2", "031,0,Abc1,"), request(' ', "A2", "031,0,Xxx0,")},
    // Of what there is no command for.
    {Direction::ToRegister, request(' ', "7F", "1,Abc1,"), request(' ', "7F", "0,Xxx0,")},
    {Direction::ToRegister, request('!', "A1", "31,0,"), request('!', "A1", "31,0,")},
    // The answer does not tell what was asked.
    {Direction::ToHost, answer('!', "A1", "QZXW,"), answer('!', "A1", "XXXX,")},
    {Direction::ToRegister, request('!', "A1", "25,0,"), request('!', "A1", "25,0,")},
    {Direction::ToHost, answer('!', "A1", "QZXW,"), answer('!', "A1", "QZXW,")},
    // An echo holds what the request holds.
    {Direction::ToRegister, request(' ', "60", "\x88,"), request(' ', "60", "\x95,")},
    {Direction::ToHost, request(' ', "60", "\x88,"), request(' ', "60", "\x95,")},
    {Direction::ToHost, "\xAF\xA2 Ab1\x1C", "\xE5\xE5 Xx0\x1C"},
    {Direction::ToRegister,
        xmlRequest("a", 8,
            "<pa n=\"3\" t=\"7\">" + leaf("1021", "Анна &amp; Ян&#1103;") + leaf("1030", "Хлеб")
                + leaf("1008", "a.b@mail.ru") + "<pa n=\"1256\" t=\"7\">" + leaf("1227", "ООО") + "</pa>"
                + leaf("1055", "1") + "<pa t='1' n='1228'/></pa>"),
        xmlRequest("a", 8,
            "<pa n=\"3\" t=\"7\">" + leaf("1021", "Хххх &amp; Хх&#0120;") + leaf("1030", "Хлеб")
                + leaf("1008", "x.x@xxxx.xx") + "<pa n=\"1256\" t=\"7\">" + leaf("1227", "ХХХ") + "</pa>"
                + leaf("1055", "1") + "<pa t='1' n='1228'/></pa>")},
    {Direction::ToRegister,
        xmlRequest("a", 8,
            leaf("HeaderText", "‼?f0160028Гарантия 2\n‼?q0004CARD‼?b1379") + leaf("1187", "Ул., 7")
                + "<pa n=\"1084\" t=\"7\">" + leaf("1085", "Карта") + leaf("1086", "79") + "</pa>"
                + leaf("1192", "ЗАКАЗ-17") + "<pa n=\"1224\" t=\"7\">" + leaf("1171", "+79") + "</pa>"
                + leaf("1073", "+79") + leaf("Footer", "СДАЧА: 0.50")),
        xmlRequest("a", 8,
            leaf("HeaderText", "‼?f0160028Хххххххх 0\n‼?q0004XXXX‼?b1300") + leaf("1187", "Хх., 0")
                + "<pa n=\"1084\" t=\"7\">" + leaf("1085", "Ххххх") + leaf("1086", "00") + "</pa>"
                + leaf("1192", "ХХХХХ-00") + "<pa n=\"1224\" t=\"7\">" + leaf("1171", "+00") + "</pa>"
                + leaf("1073", "+00") + leaf("Footer", "СДАЧА: 0.50"))},
    {Direction::ToRegister, xmlRequest("a", 30, leaf("NonFiscalText", "Ира")),
        xmlRequest("a", 30, leaf("NonFiscalText", "Ххх"))},
    {Direction::ToHost, escaped(xmlAnswer("a", 54, leaf("1203", "77&quot;&lt;21") + leaf("1040", "77"))),
        escaped(xmlAnswer("a", 54, leaf("1203", "00&quot;&lt;00") + leaf("1040", "77")))},
    {Direction::ToHost, xmlAnswer("a", 54, leaf("Proxy.Password", "s3cret")),
        xmlAnswer("a", 54, leaf("Proxy.Password", "x0xxxx"))},
};

/// The frame as it is with the stand-in for its password, and check digits that are right for it.
QByteArray withStandInPassword(const QByteArray& frame)
{
    constexpr qsizetype before = 5;
    constexpr qsizetype checkDigits = 2;
    if (!frame.startsWith("\x02QZXW"))
        return frame;
    return checked("XXXX" + frame.mid(before).chopped(checkDigits));
}

TEST(Mask, PeopleAndPasswordsGetStandIns)
{
    trace::Mask mask;
    trace::Mask again;
    for (const auto& [direction, frame, expected] : maskRows) {
        const QByteArray masked = mask.masked({0, 1, direction, frame});
        EXPECT_EQ(masked.toPercentEncoding("<>/ ").toStdString(),
            withStandInPassword(expected).toPercentEncoding("<>/ ").toStdString());
        EXPECT_EQ(masked.size(), frame.size());
        EXPECT_EQ(again.masked({0, 1, direction, masked}), masked) << "once is enough";
        EXPECT_EQ(trace::Decoder().decode({0, 1, direction, masked}).fault.toStdString(),
            trace::Decoder().decode({0, 1, direction, frame}).fault.toStdString());
    }
}

TEST(Mask, WrongCheckStaysWrong)
{
    QByteArray frame = request(' ', "60", "\x88\xA2\xA0,");
    frame[frame.size() - 1] = frame.endsWith('0') ? '1' : '0';
    const QByteArray masked = trace::Mask().masked(toRegister(frame));
    EXPECT_FALSE(masked.contains("\x88\xA2\xA0"));
    EXPECT_EQ(trace::Decoder().decode(toRegister(masked)).fault, "check value");
}

// Wherever a frame broke off: nothing of a name is left.
TEST(Mask, PartsOfFramesAreMaskedToo)
{
    const QByteArray whole = request(' ', "20", "2,,\x88\xA2\xA0\xAD,772100000040,,1,89991234567,0,");
    for (qsizetype size = 1; size < whole.size(); ++size) {
        EXPECT_FALSE(trace::Mask().masked(toRegister(whole.left(size))).contains("\x88\xA2")) << size;
        EXPECT_FALSE(trace::Mask().masked(toHost(whole.mid(size))).contains("7721")) << size;
    }
    const QByteArray document = xmlRequest("a", 8, leaf("1021", "Анна") + leaf("1008", "anna@mail.ru"));
    for (qsizetype size = 1; size < document.size(); ++size) {
        const QByteArray masked = trace::Mask().masked(toRegister(document.left(size)));
        EXPECT_FALSE(masked.contains("Анна") || masked.contains("anna")) << size;
    }
}

} // namespace
