#pragma once

#include "register/amounts.h"

#include <QDateTime>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <optional>

class QXmlStreamReader;
class QXmlStreamWriter;

namespace emulator {

/// Kinds of a parameter; the numbers are those of the attribute "t".
enum class XmlType {
    Text = 1,
    Sum = 2,
    Thousandths = 3,
    Integer = 4,
    DateTime = 5,
    List = 6,
    Structure = 7,
    DateTimeWithMilliseconds = 8,
    Byte = 9
};

/// One parameter of the tree that a request or an answer carries: the element "pa".
struct XmlNode
{
    QString name;
    XmlType type = XmlType::Structure;
    QString value;
    QList<XmlNode> children;
    /// It was written with a namespace or under a prefix.
    bool hasNamespace = false;
    /// Its type was written with a sign, a blank or a zero before it.
    bool hasOddType = false;

    static XmlNode structure(const QString& name, const QList<XmlNode>& children);
    static XmlNode text(const QString& name, const QString& value);
    static XmlNode number(const QString& name, qint64 value);
    static XmlNode money(const QString& name, Money sum);
    static XmlNode dateTime(const QString& name, const QDateTime& time);

    bool isContainer() const { return type == XmlType::List || type == XmlType::Structure; }
    /// The first child of that name, or none.
    const XmlNode* child(const QString& childName) const;
    QString textOf(const QString& childName) const;
    /// 0 when there is none.
    qint64 numberOf(const QString& childName) const;
    Money moneyOf(const QString& childName) const;
    Quantity quantityOf(const QString& childName) const;
    /// The texts of all children, by name.
    QJsonObject toJson() const;

    /// Reads the element that the reader stands on. What is no tree of parameters, or a value that does not
    /// have the form of its type, raises the reader's error.
    static XmlNode read(QXmlStreamReader& reader, int depth = 0);
    /// Reads a whole text; no value but an error when it is not well-formed or not a tree.
    static std::optional<XmlNode> parse(const QString& text, QString& error);
    void write(QXmlStreamWriter& writer) const;
    QString toText() const;
};

/// The format of dates with times on this protocol.
inline const QString xmlDateTimeFormat = QStringLiteral("yyyy-MM-dd HH:mm:ss");

} // namespace emulator
