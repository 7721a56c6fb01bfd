#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace trace {

/// A document of the XML protocol as far as it could be read.
struct XmlDocument
{
    struct Leaf
    {
        /// Names from the root's children down, with points between them; children of lists are counted.
        QString path;
        /// Number of the type, as the document has it.
        QString type;
        QString value;
        /// It, or a node above it, has to be masked.
        bool isPersonal = false;
    };

    bool isRequest = false;
    QString id;
    int command = -1;
    /// Label and versions.
    QString envelope;
    QString result;
    QString errorCategory;
    QString errorCode;
    QString errorDescription;
    /// Of the tree of data: what has a text, and what has neither a text nor children.
    QList<Leaf> leaves;
    /// What is wrong with it; empty for a sound one.
    QString fault;
};

namespace xmldocument {

/// How a document begins: one of these.
constexpr const char* beginnings[] = {"<?xml", "<Arm"};
bool isDocument(const QByteArray& bytes);

XmlDocument parse(const QByteArray& bytes);
/// The document with another text in its RequestId.
QByteArray withId(const QByteArray& bytes, const QByteArray& id);
/// The request as one of that command, which has no data.
QByteArray question(const QByteArray& request, int command);
/// A refusal of that request.
QByteArray refusal(const XmlDocument& request, const QString& description);

} // namespace xmldocument

} // namespace trace
