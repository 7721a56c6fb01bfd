#include "xml/tree.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <limits>

namespace emulator {

namespace {

constexpr int deepest = 8;

bool isDateTime(const QString& value, const QString& format)
{
    return QDateTime::fromString(value, format).isValid();
}

bool matches(const QString& value, const QString& pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern)).match(value).hasMatch();
}

bool hasForm(XmlType type, const QString& value)
{
    // A host that asks for something sends it empty.
    if (value.isEmpty())
        return true;
    switch (type) {
    case XmlType::Text:
        return true;
    case XmlType::Sum:
        return matches(value, QStringLiteral("-?\\d{1,12}\\.\\d{2}"));
    case XmlType::Thousandths:
        return matches(value, QStringLiteral("-?\\d{1,10}\\.\\d{3}"));
    case XmlType::Integer: {
        constexpr qint64 least = std::numeric_limits<qint32>::min();
        constexpr qint64 greatest = std::numeric_limits<quint32>::max();
        bool ok = false;
        const qint64 number = value.toLongLong(&ok);
        return ok && number >= least && number <= greatest && matches(value, QStringLiteral("-?\\d+"));
    }
    case XmlType::DateTime:
        return isDateTime(value, xmlDateTimeFormat);
    case XmlType::DateTimeWithMilliseconds:
        return isDateTime(value, xmlDateTimeFormat + QStringLiteral(".zzz"));
    case XmlType::Byte:
        return matches(value, QStringLiteral("0x[0-9A-Fa-f]{2}"));
    case XmlType::List:
    case XmlType::Structure:
        return value.trimmed().isEmpty();
    }
    return false;
}

// A list holds structures of one name, a structure anything, a value nothing.
bool holds(const XmlNode& parent, const XmlNode& child)
{
    if (parent.type == XmlType::List)
        return child.type == XmlType::Structure && child.name == parent.children.constFirst().name;
    return parent.type == XmlType::Structure;
}

void readBegin(QXmlStreamReader& reader, XmlNode& node)
{
    bool ok = false;
    const QString digits = reader.attributes().value(QLatin1String("t")).toString();
    const int type = digits.toInt(&ok);
    node.type = static_cast<XmlType>(type);
    node.hasOddType = digits != QString::number(type);
    node.name = reader.attributes().value(QLatin1String("n")).toString();
    node.hasNamespace = !reader.namespaceUri().isEmpty() || !reader.namespaceDeclarations().isEmpty();
    if (reader.name() != QLatin1String("pa") || reader.attributes().size() != 2 || node.name.isEmpty() || !ok
        || type < 1 || type > 9)
        reader.raiseError(QStringLiteral("no parameter"));
}

} // namespace

XmlNode XmlNode::structure(const QString& name, const QList<XmlNode>& children)
{
    return {name, XmlType::Structure, {}, children};
}

XmlNode XmlNode::text(const QString& name, const QString& value)
{
    return {name, XmlType::Text, value, {}};
}

XmlNode XmlNode::number(const QString& name, qint64 value)
{
    return {name, XmlType::Integer, QString::number(value), {}};
}

XmlNode XmlNode::money(const QString& name, Money sum)
{
    return {name, XmlType::Sum, moneyText(sum), {}};
}

XmlNode XmlNode::dateTime(const QString& name, const QDateTime& time)
{
    return {name, XmlType::DateTime, time.toString(xmlDateTimeFormat), {}};
}

const XmlNode* XmlNode::child(const QString& childName) const
{
    const auto found = std::find_if(children.cbegin(), children.cend(),
        [&childName](const XmlNode& node) { return node.name == childName; });
    return found == children.cend() ? nullptr : &*found;
}

QString XmlNode::textOf(const QString& childName) const
{
    const XmlNode* const node = child(childName);
    return node == nullptr ? QString() : node->value;
}

qint64 XmlNode::numberOf(const QString& childName) const
{
    const XmlNode* const node = child(childName);
    return node == nullptr ? 0 : node->value.toLongLong();
}

Money XmlNode::moneyOf(const QString& childName) const
{
    return parseDecimal(textOf(childName).toLatin1(), 2).value_or(0);
}

Quantity XmlNode::quantityOf(const QString& childName) const
{
    return parseDecimal(textOf(childName).toLatin1(), 3).value_or(0);
}

QJsonObject XmlNode::toJson() const
{
    QJsonObject object;
    for (const XmlNode& node : children)
        object[node.name] = node.value;
    return object;
}

XmlNode XmlNode::read(QXmlStreamReader& reader, int depth)
{
    XmlNode node;
    readBegin(reader, node);
    if (depth > deepest)
        reader.raiseError(QStringLiteral("too deep"));
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::EndElement) {
        if (reader.isCharacters())
            node.value += reader.text();
        if (!reader.isStartElement())
            continue;
        node.children.append(read(reader, depth + 1));
        if (!holds(node, node.children.constLast()))
            reader.raiseError(QStringLiteral("\"%1\" out of place").arg(node.children.constLast().name));
    }
    if (!reader.hasError() && !hasForm(node.type, node.value))
        reader.raiseError(QStringLiteral("bad value of \"%1\"").arg(node.name));
    if (node.isContainer())
        node.value.clear();
    return node;
}

std::optional<XmlNode> XmlNode::parse(const QString& text, QString& error)
{
    QXmlStreamReader reader(text);
    reader.readNextStartElement();
    const XmlNode root = reader.hasError() ? XmlNode() : read(reader);
    while (!reader.atEnd())
        reader.readNext();
    error = reader.errorString();
    return reader.hasError() ? std::nullopt : std::optional<XmlNode>(root);
}

void XmlNode::write(QXmlStreamWriter& writer) const
{
    writer.writeStartElement(QStringLiteral("pa"));
    writer.writeAttribute(QStringLiteral("n"), name);
    writer.writeAttribute(QStringLiteral("t"), QString::number(static_cast<int>(type)));
    if (!value.isEmpty())
        writer.writeCharacters(value);
    for (const XmlNode& node : children)
        node.write(writer);
    writer.writeEndElement();
}

QString XmlNode::toText() const
{
    QString text;
    QXmlStreamWriter writer(&text);
    write(writer);
    return text;
}

} // namespace emulator
