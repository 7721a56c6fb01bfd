#include "qtprinters.h"

#include <xmlutils.h>

#include <gtest/gtest.h>
#include <QDomDocument>
#include <QStringList>

namespace {

class XmlUtils : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(document.setContent(QStringLiteral(
            R"(<r n="1"><!-- n="2" --><a n="2"><b n="5">x</b><b n="6"><![CDATA[<y/>]]></b></a>)"
            R"(<a n="3">text<b n="5">z</b></a><c n="">empty</c><d/></r>)")));
    }

    QString textOf(const char* value) const
    {
        return xmlutils::getElementByAttribute(document, N, QLatin1String(value)).text();
    }

    const QString N = QStringLiteral("n");
    QDomDocument document;
};

TEST_F(XmlUtils, ValueByTagCountsInDocumentOrder)
{
    const QString b = QStringLiteral("b");
    const QStringList values{QStringLiteral("x"), QStringLiteral("<y/>"), QStringLiteral("z"), QString()};
    for (int index = 0; index < values.size(); ++index)
        EXPECT_EQ(xmlutils::getValueByTag(document, b, index), values.at(index));
    EXPECT_EQ(xmlutils::getValueByTag(document, b, -1), QString());
    EXPECT_EQ(xmlutils::getValueByTag(document, QStringLiteral("missing"), 0), QString());
}

TEST_F(XmlUtils, ValueByAttributeLooksAtTheGivenNodesOnly)
{
    const QDomNodeList top = document.documentElement().childNodes();
    EXPECT_EQ(xmlutils::getValueByAttribute(top, N, 3), QStringLiteral("textz"));
    EXPECT_EQ(xmlutils::getValueByAttribute(top, N, QStringLiteral("5")), QString());
    // An element without the attribute is not one with an empty value.
    EXPECT_EQ(xmlutils::getValueByAttribute(top, N, QString()), QStringLiteral("empty"));
    EXPECT_EQ(xmlutils::getValueByAttribute(top, QStringLiteral("m"), QString()), QString());
    EXPECT_EQ(xmlutils::getValueByAttribute(document.childNodes(), N, 1), QStringLiteral("x<y/>textzempty"));
}

TEST_F(XmlUtils, ElementByAttributeIsTheFirstAnywhere)
{
    EXPECT_EQ(textOf("5"), QStringLiteral("x"));
    EXPECT_EQ(textOf(""), QStringLiteral("empty"));
    EXPECT_TRUE(xmlutils::getElementByAttribute(document, N, QStringLiteral("7")).isNull());
}

TEST_F(XmlUtils, ChildElementByAttributeDoesNotGoDeeper)
{
    const QDomElement root = document.documentElement();
    EXPECT_TRUE(xmlutils::getChildElementByAttribute(root, N, QStringLiteral("5")).isNull());
    const QDomElement second = xmlutils::getChildElementByAttribute(root, N, QStringLiteral("3"));
    EXPECT_EQ(
        xmlutils::getChildElementByAttribute(second, N, QStringLiteral("5")).text(), QStringLiteral("z"));
}

} // namespace
