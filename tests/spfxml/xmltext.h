#pragma once

#include <QByteArray>
#include <QDomDocument>
#include <QString>

#include <string>

/// The document of a text; fails the test when it is not XML.
QDomDocument xmlDocument(const QString& text);

/// A tree on one line, with the attributes sorted, so that their order does not count:
/// "<root a=1>text<child>...</child></root>". A CDATA section stands in [[ and ]].
std::string flatXml(const QDomNode& node);

/// An answer document with keys and texts: "key=text|key=text".
QDomDocument answerWith(const char* values);

/// A whole answer of the register as it comes over the wire.
QByteArray wireAnswer(const QString& id, const QString& fields);
/// One that reports success and holds the inner document.
QByteArray successAnswer(const QString& id, const QString& inner = {});
