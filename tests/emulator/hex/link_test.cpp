#include "register/codepage.h"
#include "rig.h"

#include <gtest/gtest.h>

TEST(HexLink, AnswersByteForByte)
{
    Rig rig;
    const auto request = QByteArray::fromHex("02 51 5A 58 57 20 41 30 03 35 36");
    EXPECT_EQ(rig.exchange(request).toHex(' '), "02 20 41 30 30 30 30 1c 31 1c 30 1c 03 37 46");
    // A command without an answer of its own: header, ETX and check value.
    const auto start = "\x02QZXW\xFD" + QByteArray("00010324\u001C090000\x1C\x03");
    EXPECT_EQ(rig.exchange(start + Rig::check(start.mid(1))).toHex(' '), "02 fd 30 30 30 30 03 46 45");
}

TEST(HexLink, HasOneCharacterForEachByte)
{
    QByteArray all(256, '\0');
    std::iota(all.begin(), all.end(), '\0');
    const QString text = emulator::codepage::toText(all);
    EXPECT_EQ(emulator::codepage::fromText(text), all);
    EXPECT_EQ(text.first(128), QString::fromLatin1(all.first(128)));
    EXPECT_EQ(emulator::codepage::fromText(QStringLiteral("Ж😀\x7F€")), "\x86?\x7F?");
}

TEST(HexLink, RefusesWhatIsNoRightFrame)
{
    // Password, packet id and command, and what a strict register and a lenient one answer.
    const std::tuple<QByteArray, char, QByteArray, int, int> cases[] = {
        {"QZXW", '!', "A0", 0, 0},
        {"QZXW", '!', "a0", 2, 0},
        {"QZXW", '\x20', "A0", 0, 0},
        {"QZXW", '\x1F', "A0", 3, 0},
        {"QZXW", '\xFD', "A0", 0, 0},
        {"QZXW", '\xFE', "A0", 3, 0},
        {"QZXV", '!', "A0", 6, 6},
        // No such function, no number, a field without its end, a field too few.
        {"QZXW", '!', "A9", 2, 2},
        {"QZXW", '!', "G0", 2, 2},
        {"QZXW", '!', "A59", 3, 3},
        {"QZXW", '!', "A5", 3, 3},
        // Not started yet.
        {"QZXW", '!', "6B\x1C\x1C", 1, 1},
    };
    for (const auto& [password, id, command, strictCode, lenientCode] : cases) {
        for (const bool lenient : {false, true}) {
            Rig rig;
            rig.protocol.setLenient(lenient);
            const QByteArray body = password + id + command + '\x03';
            const QByteArray right = '\x02' + body + Rig::check(body);
            for (const auto& [request, code] :
                {std::pair{right, lenient ? lenientCode : strictCode}, {right.chopped(2) + "00", 7}}) {
                const QByteArray answer = rig.exchange(request);
                ASSERT_GE(answer.size(), 9) << command.data();
                EXPECT_EQ(answer.at(1), id);
                EXPECT_EQ(answer.mid(4, 2).toInt(nullptr, 16), code) << command.data();
            }
        }
    }
    // A check value of small letters is none.
    const QByteArray small = "\x02QZXW,A0\x03" + Rig::check("QZXW,A0\x03").toLower();
    ASSERT_NE(small, small.toUpper());
    Rig rig;
    EXPECT_EQ(rig.exchange(small).mid(4, 2), "07");
    rig.protocol.setLenient(true);
    EXPECT_EQ(rig.exchange(small).mid(4, 2), "00");
}

TEST(HexLink, HearsThroughNoiseAndBrokenFrames)
{
    Rig rig;
    EXPECT_EQ(rig.exchange("\x05"), "\x06");
    EXPECT_EQ(rig.parse(rig.exchange("abc\x03" + rig.frame({0xA6, {}}))).code, 0);
    // A frame that was given up is followed by a new one, at once or after a pause in which ENQ is heard.
    const QByteArray begun = rig.frame({0xA6, {}}).left(7);
    EXPECT_EQ(rig.parse(rig.exchange(begun + rig.frame({0xA6, {}}))).code, 0);
    EXPECT_EQ(rig.exchange(rig.frame({0xA6, {}}).left(9)), "");
    rig.clock.advance(2000);
    EXPECT_EQ(rig.exchange("\x05"), "\x06");
    // One byte at a time is as good as all at once, and two requests in one piece get two answers.
    QByteArray answer;
    for (const char byte : rig.frame({0xA6, {}}))
        answer += rig.exchange(QByteArray(1, byte));
    EXPECT_EQ(rig.parse(answer).fields, QList<QByteArray>{"00103000000012345678"});
    EXPECT_EQ(rig.exchange(rig.frame({0xA6, {}}) + rig.frame({0xA6, {}})).count('\x02'), 2);
}

TEST(HexLink, TakesThePictureBehindItsAcknowledge)
{
    QByteArray bitmap("BM" + QByteArray(16, 0) + QByteArray::fromHex("20010000 64000000 0100 0100"));
    bitmap += QByteArray::fromHex("02030506") + QByteArray(3600, '\x02');
    Rig rig;
    rig.start();
    const QByteArray size = QByteArray::number(bitmap.size());
    EXPECT_EQ(rig.exchange(rig.frame({0xE2, {size}})), "\x06");
    EXPECT_EQ(rig.exchange('\x1B' + bitmap.left(100)), "");
    EXPECT_EQ(rig.parse(rig.exchange(bitmap.mid(100))).code, 0);
    EXPECT_EQ(rig.device.state().logo, bitmap);
    // The block once more, as after a stale answer, is swallowed; the next command is heard.
    EXPECT_EQ(rig.exchange('\x1B' + bitmap), "");
    // An ESC that no block follows swallows nothing, whether a part of the block is like it or not.
    EXPECT_EQ(rig.exchange("\x1B\x05"), "\x06");
    EXPECT_EQ(rig.parse(rig.exchange(QByteArray("\x1B") + "BM" + rig.frame({0xA6, {}}))).code, 0);
    EXPECT_EQ(rig.exchange("\x1B\x05"), "\x06");
    rig.run({open(1), text(QStringLiteral("строка")), finish()});
    EXPECT_TRUE(rig.device.tape().text().contains(QStringLiteral("[ЛОГОТИП]")));
    EXPECT_EQ(rig.code({0xE3, {}}), 0);
    EXPECT_TRUE(rig.device.state().logo.isEmpty());
    EXPECT_EQ(rig.code({0xE2, {"0"}}), 3);
    // However much noise is like the block, the next command is heard.
    const QByteArray escapes(65'536, '\x1B');
    rig.exchange(rig.frame({0xE2, {"65536"}}));
    EXPECT_EQ(rig.parse(rig.exchange('\x1B' + escapes)).code, 3);
    EXPECT_EQ(rig.parse(rig.exchange(escapes + rig.frame({0xA6, {}}))).code, 0);
}
