#include "qtprinters.h"

#include <stringutils.h>

#include <gtest/gtest.h>

namespace {

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
