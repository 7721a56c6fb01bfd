#include "xmltext.h"

#include "spfxml/requestparams.h"

#include <QDateTime>
#include <QRegularExpression>

#include <gtest/gtest.h>

using spfxml::RequestParams;
using Type = RequestParams::EParamType;

namespace {

TEST(RequestParams, formatsTheValueByItsType)
{
    const QDateTime time(QDate(2026, 3, 1), QTime(14, 5, 9, 70));
    const std::tuple<int, QVariant, const char*> cases[]
        = {{1, 7, "7"}, {2, -0.006, "-0.01"}, {2, -0.004, "0.00"}, {2, -0.0, "0.00"}, {3, -0.0004, "0.000"},
            {3, 1.5, "1.500"}, {4, 12u, "12"}, {5, time, "2026-03-01 14:05:09"},
            {8, time, "2026-03-01 14:05:09.070"}, {9, 300, "0x2c"}, {9, -1, "0xff"}};
    for (const auto& [type, value, expected] : cases)
        EXPECT_EQ(RequestParams(static_cast<Type>(type), QString(), value).getFormattedValue(),
            QLatin1String(expected));
}

TEST(RequestParams, writesTextNodesForAllButNullValues)
{
    EXPECT_TRUE(RequestParams(Type::Structure, "5", QVariant()).toString().isEmpty());
    const RequestParams tree(Type::Structure, EFrDriver::Item,
        QList<RequestParams>{
            {Type::Text, EFrDriver::CashierName, QString()}, {Type::Text, "null", QVariant()}});
    EXPECT_EQ(flat(xmlDocument(tree.toString())), "1059:7{1021:1= null:1=}");
    QDomDocument document;
    const QDomElement element = tree.toElement(document);
    EXPECT_TRUE(element.firstChild().firstChild().isText());
    EXPECT_TRUE(element.lastChild().firstChild().isNull());
}

TEST(RequestParams, writesTheTextThatADocumentWouldWrite)
{
    QString characters;
    for (char16_t code = 1; code < 0x500; ++code)
        characters += QChar(code);
    characters += " ]]> ]> > \U0001F600";
    RequestParams parent(Type::StructureList, characters,
        QList<RequestParams>{{Type::Text, "a", characters}, {Type::None, QString(), QVariant()},
            {Type::Structure, "b", QList<RequestParams>{{Type::Text, QString(), QString()}}}});
    const RequestParams tree(Type::Structure, "5", QList<RequestParams>{parent, parent});
    QDomDocument document;
    document.appendChild(tree.toElement(document));
    // A document has its attributes in any order.
    const QString expected = document.toString(1).replace(
        QRegularExpression("<pa t=\"(\\d+)\" n=\"([^\"]*)\""), "<pa n=\"\\2\" t=\"\\1\"");
    EXPECT_EQ(tree.toString(), expected);
    EXPECT_EQ(RequestParams(Type::Sum, "c", 1).toString(), "<pa n=\"c\" t=\"2\">1.00</pa>\n");
}

TEST(RequestParams, readsATree)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<pa n='5' t='6'><pa n='a' t='7'><pa n='b' t='2'>1</pa></pa><pa n='c' t='4'><![CDATA[<y>]]></pa></pa>",
            "5:6{a:7{b:2=1.00} c:4=<y>}"},
        {"<pa t='7'><pa t='x'>1</pa><pa t='99999999999'>2</pa></pa>", ":7{:0=1 :0=2}"},
        {"<a t='7'><pa n='b' t='1'><!-- c -->v</pa><pa n='c' t='7'><!-- c --><pa n='d' t='1'>x<!-- c --></pa></pa></a>",
            ":7{b:1= c:7{:0= d:1=x}}"},
        // The text of the element itself is dropped.
        {"<pa n='a' t='1'>x</pa>", "a:1="},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(flat(xmlDocument(QString::fromUtf8(text))), expected);
}

} // namespace
