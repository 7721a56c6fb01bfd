// The small things that hosts and drivers share.

#include "qtprinters.h"

#include <bytestohexutils.h>
#include <exceptions.h>
#include <stringutils.h>
#include <tr.h>

#include <gtest/gtest.h>

namespace {

TEST(BytesToHex, PrefixBeforeEachByteAndSeparatorBetween)
{
    using namespace bytestohexutils;
    const QByteArray bytes = QByteArray::fromHex("00a7ff");
    EXPECT_EQ(byteToHexStr(0x0A, QStringLiteral("0x")), QStringLiteral("0x0a"));
    EXPECT_EQ(bytesToHexStr(bytes, {}, {}), QStringLiteral("00a7ff"));
    EXPECT_EQ(
        bytesToHexStr(bytes, QStringLiteral("0x"), QStringLiteral(", ")), QStringLiteral("0x00, 0xa7, 0xff"));
    EXPECT_EQ(bytesToHexWithSpacesStr(bytes), QStringLiteral("00 a7 ff"));
}

TEST(Tr, MembersWithoutTextAreLeftOut)
{
    const tr::Tr keyOnly(QStringLiteral("key"), {});
    const tr::Tr first({}, QStringLiteral("Раз"));
    const tr::Tr second(tr::undefined, QStringLiteral("Два"));
    const tr::TrList list{keyOnly, first, tr::Tr(), second};
    EXPECT_TRUE(keyOnly.isEmpty());
    EXPECT_FALSE(first.isEmpty());
    EXPECT_EQ(list.joinRu(QStringLiteral(". ")), QStringLiteral("Раз. Два"));
    EXPECT_EQ(list.toUiList(true), (QStringList{QStringLiteral("Раз"), QStringLiteral("Два")}));
    EXPECT_EQ(list.toUiList(false).size(), 4);
}

template <typename Type, typename... Parents>
constexpr bool isCaughtAs = (std::is_base_of_v<Parents, Type> && ...);

TEST(Exceptions, EachIsCaughtAsItsParents)
{
    EXPECT_TRUE((isCaughtAs<ComDriverTimeoutException, ComDriverException, DriverException>));
    EXPECT_TRUE(
        (isCaughtAs<FrNoConnectionException, FrCommandException, FrDriverException, DriverException>));
    EXPECT_TRUE((isCaughtAs<FrWaitForPaperException, FrPaperException, FrCommandException>));
    EXPECT_TRUE((isCaughtAs<FrShiftTooLongException, FrCommandException>));
    EXPECT_TRUE((isCaughtAs<FrFatalException, FrCommandException>));
    // A host must not take one of these for another.
    EXPECT_FALSE((isCaughtAs<FrNoConnectionException, ComDriverException>));
    EXPECT_FALSE((isCaughtAs<FrFatalException, FrPaperException>));
}

TEST(WrappedString, LeftAndRightAreLaidOutOnTheWidth)
{
    const std::tuple<QString, QString, int, QStringList> cases[] = {
        {"* Код", "15", 10, {"* Код   15"}},
        {"abcdefg", "15", 10, {"abcdefg 15"}},
        {"abcdefgh", "15", 10, {"abcdefgh", "        15"}},
        {"ab cd efgh ij", "1", 7, {"ab cd", "efgh ij", "      1"}},
        {"один два три", "5", 8, {"один два", "три    5"}},
        {"abcdefghij", "", 4, {"abcd", "efgh", "ij"}},
        {"abc  ", "", 10, {"abc"}},
        {"", "abc", 5, {"  abc"}},
        {"x", "aaa bbb cc", 6, {"x", "   aaa", "bbb cc"}},
        {"", "aaa bbb", 4, {" aaa", " bbb"}},
        {"a\nb", "c", 5, {"a", "b   c"}},
        {"a", "b\nc", 5, {"a   b", "    c"}},
        {"abc", "de", 0, {"abc de"}},
    };
    for (const auto& [left, right, width, lines] : cases)
        EXPECT_EQ(stringutils::wrappedString(left, right, width), lines)
            << left.toStdString() << '|' << right.toStdString() << '|' << width;
}

TEST(RemoveControlCharacters, LineFeedsStayOnlyWhenAskedFor)
{
    const QString text = QStringLiteral("a\x01\tb\nc\x1f\x7f я");
    EXPECT_EQ(stringutils::removeControlCharacters(text), QStringLiteral("abc я"));
    EXPECT_EQ(stringutils::removeControlCharacters(text, true), QStringLiteral("ab\nc я"));
}

} // namespace
