#include "xmlutils.h"

#include <QDomDocument>

namespace {

bool hasValue(const QDomElement& element, const QString& attribute, const QString& value)
{
    // A missing attribute reads as an empty text, too.
    return element.attribute(attribute) == value && (!value.isEmpty() || element.hasAttribute(attribute));
}

// In document order; null behind the last one.
QDomElement nextElement(const QDomElement& element)
{
    const QDomElement child = element.firstChildElement();
    if (!child.isNull())
        return child;
    for (QDomElement current = element; !current.isNull(); current = current.parentNode().toElement()) {
        const QDomElement sibling = current.nextSiblingElement();
        if (!sibling.isNull())
            return sibling;
    }
    return {};
}

} // namespace

namespace xmlutils {

QDomElement createTextElement(QDomDocument& document, const QString& tag, const QString& text)
{
    QDomElement element = document.createElement(tag);
    element.appendChild(document.createTextNode(text));
    return element;
}

QString getValueByTag(const QDomDocument& document, const QString& tag, int index)
{
    const QDomNodeList nodes = document.elementsByTagName(tag);
    const bool exists = index >= 0 && index < nodes.size();
    return exists ? nodes.at(index).toElement().text() : QString();
}

QString getValueByAttribute(const QDomNodeList& nodes, const QString& attribute, const QString& value)
{
    for (int index = 0; index < nodes.size(); ++index) {
        const QDomElement element = nodes.at(index).toElement();
        if (hasValue(element, attribute, value))
            return element.text();
    }
    return {};
}

QString getValueByAttribute(const QDomNodeList& nodes, const QString& attribute, int value)
{
    return getValueByAttribute(nodes, attribute, QString::number(value));
}

QDomElement getElementByAttribute(
    const QDomDocument& document, const QString& attribute, const QString& value)
{
    QDomElement element = document.documentElement();
    while (!element.isNull() && !hasValue(element, attribute, value))
        element = nextElement(element);
    return element;
}

QDomElement getChildElementByAttribute(
    const QDomElement& element, const QString& attribute, const QString& value)
{
    QDomElement child = element.firstChildElement();
    while (!child.isNull() && !hasValue(child, attribute, value))
        child = child.nextSiblingElement();
    return child;
}

} // namespace xmlutils
