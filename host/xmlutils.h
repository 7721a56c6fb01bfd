#pragma once

#include "frhost_export.h"

#include <QString>

class QDomDocument;
class QDomElement;
class QDomNodeList;

namespace xmlutils {

/// A new element that holds the text; it belongs to the document but is not attached to it.
FRHOST_EXPORT QDomElement createTextElement(QDomDocument& document, const QString& tag, const QString& text);
/// Text of the tag's element of that index in document order, empty when there is none.
FRHOST_EXPORT QString getValueByTag(const QDomDocument& document, const QString& tag, int index);
/// Text of the first node whose attribute has the value, empty when there is none.
FRHOST_EXPORT QString getValueByAttribute(
    const QDomNodeList& nodes, const QString& attribute, const QString& value);
FRHOST_EXPORT QString getValueByAttribute(const QDomNodeList& nodes, const QString& attribute, int value);
/// The first element of the document, in document order, whose attribute has the value; null when there is
/// none.
FRHOST_EXPORT QDomElement getElementByAttribute(
    const QDomDocument& document, const QString& attribute, const QString& value);
/// The first child element whose attribute has the value; null when there is none.
FRHOST_EXPORT QDomElement getChildElementByAttribute(
    const QDomElement& element, const QString& attribute, const QString& value);

} // namespace xmlutils
