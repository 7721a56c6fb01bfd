#include "qtprinters.h"

#include <xmlutils.h>

#include <gtest/gtest.h>
#include <QDomDocument>

namespace {

TEST(XmlUtils, FindTheFirstThatFits)
{
    using namespace xmlutils;
    QDomDocument document;
    ASSERT_TRUE(document.setContent(
        QStringLiteral(R"(<r n="1"><!-- n="2" --><a n="2"><b n="5">x</b><b n="6"><![CDATA[<y/>]]></b></a>)"
                       R"(<a n="3">text<b n="5">z</b></a><c n="">empty</c><d/></r>)")));
    // In document order.
    const std::tuple<const char*, int, const char*> tags[]
        = {{"b", 0, "x"}, {"b", 1, "<y/>"}, {"b", 2, "z"}, {"b", 3, ""}, {"b", -1, ""}, {"missing", 0, ""}};
    for (const auto& [tag, index, value] : tags)
        EXPECT_EQ(getValueByTag(document, tag, index), value) << tag << index;

    // Of the given nodes only; an element without the attribute is not one with an empty value.
    const QDomElement root = document.documentElement();
    EXPECT_EQ(getValueByAttribute(root.childNodes(), "n", 3), "textz");
    EXPECT_EQ(getValueByAttribute(root.childNodes(), "n", QString("5")), "");
    EXPECT_EQ(getValueByAttribute(root.childNodes(), "n", QString()), "empty");
    EXPECT_EQ(getValueByAttribute(root.childNodes(), "m", QString()), "");
    EXPECT_EQ(getValueByAttribute(document.childNodes(), "n", 1), "x<y/>textzempty");

    // Anywhere, and among the children alone.
    EXPECT_EQ(getElementByAttribute(document, "n", "5").text(), "x");
    EXPECT_EQ(getElementByAttribute(document, "n", "").text(), "empty");
    EXPECT_TRUE(getElementByAttribute(document, "n", "7").isNull());
    EXPECT_TRUE(getChildElementByAttribute(root, "n", "5").isNull());
    const QDomElement second = getChildElementByAttribute(root, "n", "3");
    EXPECT_EQ(getChildElementByAttribute(second, "n", "5").text(), "z");
}

} // namespace
