#include "qtprinters.h"

#include <stringutils.h>

#include <gtest/gtest.h>

namespace {

struct Case
{
    const char* left;
    const char* right;
    int width;
    QList<const char*> lines;
};

QStringList texts(const QList<const char*>& lines)
{
    QStringList result;
    for (const char* line : lines)
        result.append(QString::fromUtf8(line));
    return result;
}

TEST(WrappedString, LeftAndRightAreLaidOutOnTheWidth)
{
    const Case cases[] = {
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
    for (const Case& row : cases) {
        EXPECT_EQ(
            stringutils::wrappedString(QString::fromUtf8(row.left), QString::fromUtf8(row.right), row.width),
            texts(row.lines))
            << row.left << '|' << row.right << '|' << row.width;
    }
}

TEST(RemoveControlCharacters, LineFeedsStayOnlyWhenAskedFor)
{
    const QString text = QStringLiteral("a\x01\tb\nc\x1f\x7f я");
    EXPECT_EQ(stringutils::removeControlCharacters(text), QStringLiteral("abc я"));
    EXPECT_EQ(stringutils::removeControlCharacters(text, true), QStringLiteral("ab\nc я"));
}

} // namespace
