#include "xmltext.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

std::string flatElement(const QDomElement& element)
{
    QStringList attributes;
    for (int i = 0; i < element.attributes().count(); ++i) {
        const QDomNode attribute = element.attributes().item(i);
        attributes.append(QStringLiteral(" %1=%2").arg(attribute.nodeName(), attribute.nodeValue()));
    }
    attributes.sort();
    std::string text = (QLatin1Char('<') + element.tagName() + attributes.join(QString()) + QLatin1Char('>'))
                           .toStdString();
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

QDomDocument answerWith(const char* values)
{
    QString text = QStringLiteral("<pa n='root' t='7'><pa n='group' t='7'>");
    for (const QString& value : QString::fromUtf8(values).split(QLatin1Char('|')))
        text += QStringLiteral("<pa n='%1' t='1'>%2</pa>")
                    .arg(value.section(QLatin1Char('='), 0, 0), value.section(QLatin1Char('='), 1));
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
