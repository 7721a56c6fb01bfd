#include "xmltext.h"

#include <gtest/gtest.h>

namespace {

std::string flatElement(const QDomElement& element)
{
    QMap<QString, QString> attributes;
    for (int i = 0; i < element.attributes().count(); ++i) {
        const QDomAttr attribute = element.attributes().item(i).toAttr();
        attributes.insert(attribute.name(), attribute.value());
    }
    std::string text = "<" + element.tagName().toStdString();
    for (auto it = attributes.cbegin(); it != attributes.cend(); ++it)
        text += " " + it.key().toStdString() + "=" + it.value().toStdString();
    text += ">";
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling())
        text += flatXml(child);
    return text + "</" + element.tagName().toStdString() + ">";
}

} // namespace

QDomDocument xmlDocument(const QString& text)
{
    QDomDocument document;
    EXPECT_TRUE(document.setContent(text)) << text.toStdString();
    return document;
}

std::string flatXml(const QDomNode& node)
{
    if (node.isElement())
        return flatElement(node.toElement());
    if (!node.isCDATASection())
        return node.nodeValue().toStdString();
    if (node.nodeValue().isEmpty())
        return "[[]]";
    return "[[" + flatXml(xmlDocument(node.nodeValue()).documentElement()) + "]]";
}

QDomDocument answerWith(const QMap<QString, QString>& values)
{
    QString text = QStringLiteral("<pa n='root' t='7'><pa n='group' t='7'>");
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        text += QStringLiteral("<pa n='%1' t='1'>%2</pa>").arg(it.key(), it.value());
    return xmlDocument(text + QStringLiteral("</pa></pa>"));
}

QByteArray wireAnswer(const QString& id, const QString& fields)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ArmResponse><ResponseBody>"
                          "<RequestId>%1</RequestId>%2</ResponseBody></ArmResponse>")
        .arg(id, fields)
        .toUtf8();
}

QByteArray successAnswer(const QString& id, const QString& inner)
{
    return wireAnswer(
        id, QStringLiteral("<Result>0</Result><ResponseData><![CDATA[%1]]></ResponseData>").arg(inner));
}
