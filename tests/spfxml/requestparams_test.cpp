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
    const std::tuple<int, QVariant, const char*> cases[] = {
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
    for (const auto& [type, value, expected] : cases)
        EXPECT_EQ(RequestParams(static_cast<Type>(type), QStringLiteral("x"), value)
                      .getFormattedValue()
                      .toStdString(),
            expected);
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

TEST(RequestParams, readsTheTreeBack)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<pa n='5' t='7'><pa n='a' t='1'>x</pa><pa n='b' t='4'><![CDATA[<y>]]></pa></pa>",
            "<pa n=5 t=7><pa n=a t=1>x</pa><pa n=b t=4><y></pa></pa>"},
        {"<pa n='5' t='6'><pa n='a' t='7'><pa n='b' t='2'>1</pa></pa></pa>",
            "<pa n=5 t=6><pa n=a t=7><pa n=b t=2>1.00</pa></pa></pa>"},
        {"<pa><pa t='x'>1</pa><pa t='99999999999'>2</pa></pa>",
            "<pa n= t=0><pa n= t=0>1</pa><pa n= t=0>2</pa></pa>"},
    };
    for (const auto& [text, expected] : cases) {
        const QDomDocument document = xmlDocument(QString::fromUtf8(text));
        const QString written = RequestParams::fromElement(document.documentElement()).toString();
        EXPECT_EQ(flatXml(xmlDocument(written).documentElement()), expected);
    }
    EXPECT_TRUE(RequestParams::fromElement(QDomElement()).toString().isEmpty());
    // Without a text a child is a container; the text of the element itself is dropped.
    const QDomDocument empty = xmlDocument(QStringLiteral("<pa><pa n='a' t='1'/></pa>"));
    EXPECT_TRUE(RequestParams::fromElement(empty.documentElement()).getParams().at(0).getValue().isNull());
    const QDomDocument leaf = xmlDocument(QStringLiteral("<pa n='a' t='1'>x</pa>"));
    EXPECT_TRUE(RequestParams::fromElement(leaf.documentElement()).getValue().isNull());
}

} // namespace
