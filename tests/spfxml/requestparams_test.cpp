#include "xmltext.h"

#include "spfxml/requestparams.h"

#include <QDateTime>

#include <gtest/gtest.h>

using spfxml::RequestParams;
using Type = RequestParams::EParamType;

namespace {

TEST(RequestParams, formatsTheValueByItsType)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9, 70));
    const struct
    {
        int type;
        QVariant value;
        const char* expected;
    } cases[] = {
        {1, 7, "7"},
        {2, 5, "5.00"},
        {2, -0.006, "-0.01"},
        {3, 1.5, "1.500"},
        {4, 12u, "12"},
        {5, time, "2026-03-01 14:05:09"},
        {8, time, "2026-03-01 14:05:09.070"},
        {9, 300, "0x2c"},
        {9, -1, "0xff"},
    };
    for (const auto& c : cases) {
        const RequestParams param(static_cast<Type>(c.type), QStringLiteral("x"), c.value);
        EXPECT_EQ(param.getFormattedValue().toStdString(), c.expected) << c.type;
    }
}

TEST(RequestParams, writesTheTree)
{
    EXPECT_TRUE(RequestParams().toString().isEmpty());
    EXPECT_TRUE(
        RequestParams(Type::Structure, QStringLiteral("5"), QList<RequestParams>()).toString().isEmpty());

    const RequestParams tree(Type::Structure, EFrDriver::Item,
        QList<RequestParams>{
            {Type::Text, EFrDriver::CashierName, QString()},
            {Type::Text, QStringLiteral("null"), QVariant()},
            {Type::Sum, QStringLiteral("CashSumm"), 10},
        });
    const std::string expected
        = "<pa n=1059 t=7><pa n=1021 t=1></pa><pa n=null t=1></pa><pa n=CashSumm t=2>10.00</pa></pa>";
    EXPECT_EQ(flatXml(xmlDocument(tree.toString()).documentElement()), expected);
    // A value that is there but empty still makes a text node, a null value does not.
    QDomDocument document;
    const QDomElement element = tree.toElement(document);
    EXPECT_TRUE(element.childNodes().at(0).firstChild().isText());
    EXPECT_TRUE(element.childNodes().at(1).firstChild().isNull());
    EXPECT_FALSE(tree.toString().contains(QStringLiteral("<?xml")));
}

std::string described(const RequestParams& params)
{
    std::string text
        = params.getName().toStdString() + ":" + std::to_string(static_cast<int>(params.getType()));
    text += params.getValue().isNull() ? std::string(" null")
                                       : " '" + params.getValue().toString().toStdString() + "'";
    for (const RequestParams& child : params.getParams())
        text += " (" + described(child) + ")";
    return text;
}

TEST(RequestParams, readsTheTreeBack)
{
    const struct
    {
        const char* text;
        const char* expected;
    } cases[] = {
        {"<pa n='5' t='7'><pa n='a' t='1'>x</pa><pa n='b' t='4'><![CDATA[<y>]]></pa></pa>",
            "5:7 null (a:1 'x') (b:4 '<y>')"},
        {"<pa n='5' t='6'><pa n='a' t='7'><pa n='b' t='2'>1.00</pa></pa></pa>",
            "5:6 null (a:7 null (b:2 '1.00'))"},
        // Neither text nor children: a container, not a leaf with an empty text.
        {"<pa n='5' t='7'><pa n='a' t='1'/></pa>", "5:7 null (a:1 null)"},
        {"<pa><pa t='x'>1</pa><pa t='99999999999'>2</pa></pa>", ":0 null (:0 '1') (:0 '2')"},
    };
    for (const auto& c : cases) {
        const QDomDocument document = xmlDocument(QString::fromUtf8(c.text));
        EXPECT_EQ(described(RequestParams::fromElement(document.documentElement())), c.expected);
    }
    EXPECT_EQ(described(RequestParams::fromElement(QDomElement())), ":0 null");
    // Only children are read: the text of the element itself is dropped.
    const QDomDocument leaf = xmlDocument(QStringLiteral("<pa n='a' t='1'>x</pa>"));
    EXPECT_TRUE(RequestParams::fromElement(leaf.documentElement()).getValue().isNull());
}

} // namespace
