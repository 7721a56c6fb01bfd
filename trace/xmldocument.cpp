#include "trace/xmldocument.h"

#include "trace/tagtable.h"

#include <QHash>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <iterator>

namespace trace::xmldocument {

namespace {

constexpr int deepestTree = 64;
// The type of a node whose children are a list.
const QString listType = QStringLiteral("6");

/// Reads a node behind its start element.
class TreeReader
{
public:
    TreeReader(QXmlStreamReader& reader, QList<XmlDocument::Leaf>& leaves)
        : m_reader(reader)
        , m_leaves(leaves)
    {
    }

    /// With the path of the node; a child's is that of its list, or the child's own.
    void readChildren(const XmlDocument::Leaf& node, int depth);

private:
    void readChild(const XmlDocument::Leaf& node, int child, int depth);

    QXmlStreamReader& m_reader;
    QList<XmlDocument::Leaf>& m_leaves;
};

void TreeReader::readChildren(const XmlDocument::Leaf& node, int depth)
{
    if (depth > deepestTree)
        return m_reader.raiseError(QStringLiteral("the tree of data is too deep"));
    QString text;
    int children = 0;
    while (!m_reader.atEnd() && m_reader.readNext() != QXmlStreamReader::EndElement) {
        if (m_reader.isCharacters())
            text += m_reader.text();
        if (!m_reader.isStartElement())
            continue;
        readChild(node, ++children, depth);
    }
    // A root without anything is a tree without data; one with a text is told under its own name.
    if (children == 0 && (!node.path.isEmpty() || !text.trimmed().isEmpty()))
        m_leaves.append({node.path, node.type, text, node.isPersonal});
}

void TreeReader::readChild(const XmlDocument::Leaf& node, int child, int depth)
{
    const QXmlStreamAttributes attributes = m_reader.attributes();
    const QString name = attributes.value(QLatin1String("n")).toString();
    const QString above = node.path.isEmpty() ? QString() : node.path + QLatin1Char('.');
    const QString path = node.type == listType ? QStringLiteral("%1[%2]").arg(node.path).arg(child)
                                               : above + tagtable::name(name);
    const bool isPersonal = node.isPersonal || tagtable::isPersonal(name);
    readChildren({path, attributes.value(QLatin1String("t")).toString(), {}, isPersonal}, depth + 1);
}

void readTree(const QString& text, XmlDocument& document)
{
    if (text.trimmed().isEmpty())
        return;
    QXmlStreamReader reader(text);
    if (reader.readNextStartElement()) {
        const QXmlStreamAttributes root = reader.attributes();
        const QString name = root.value(QLatin1String("n")).toString();
        TreeReader(reader, document.leaves)
            .readChildren({{}, root.value(QLatin1String("t")).toString(), {}, tagtable::isPersonal(name)}, 0);
        if (!document.leaves.isEmpty() && document.leaves.constFirst().path.isEmpty())
            document.leaves.first().path = tagtable::name(name);
    }
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        document.fault = QStringLiteral("the data: %1").arg(reader.errorString());
}

using Texts = QHash<QString, QString>;

/// The texts of all elements that have no children, wherever they stand; of several of a name the first
/// one's.
Texts readTexts(QXmlStreamReader& reader, QString& root)
{
    Texts texts;
    QString name;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            name = reader.name().toString();
            if (root.isEmpty())
                root = name;
            else if (texts.contains(name))
                name.clear();
            else
                texts.insert(name, QString());
        } else if (reader.isCharacters() && !name.isEmpty()) {
            texts[name] += reader.text();
        } else if (reader.isEndElement()) {
            name.clear();
        }
    }
    return texts;
}

QString textOf(const Texts& texts, const char* name)
{
    return texts.value(QLatin1String(name));
}

/// The document with something else in its element of that name, if it has one.
QByteArray withContent(const QByteArray& bytes, const QByteArray& name, const QByteArray& content)
{
    const QByteArray begin = '<' + name + '>';
    const qsizetype start = bytes.indexOf(begin);
    const qsizetype end = bytes.indexOf("</" + name + '>', start);
    if (start < 0 || end < 0)
        return bytes;
    return bytes.left(start + begin.size()) + content + bytes.mid(end);
}

QString envelopeOf(const Texts& texts)
{
    QStringList parts;
    for (const char* const name : {"ProtocolLabel", "ProtocolVersion", "msgFFDVer", "msgContVer"})
        parts.append(textOf(texts, name));
    return parts.join(QLatin1Char(' ')).trimmed();
}

} // namespace

bool isDocument(const QByteArray& bytes)
{
    return std::any_of(std::begin(beginnings), std::end(beginnings),
        [&bytes](const char* beginning) { return bytes.startsWith(beginning); });
}

XmlDocument parse(const QByteArray& bytes)
{
    QXmlStreamReader reader(bytes.trimmed());
    QString root;
    const Texts texts = readTexts(reader, root);
    XmlDocument document;
    document.isRequest = root == QLatin1String("ArmRequest");
    if (reader.hasError())
        document.fault = reader.errorString();
    document.id = textOf(texts, "RequestId");
    bool isNumber = false;
    const int command = textOf(texts, "Command").toInt(&isNumber);
    document.command = isNumber ? command : -1;
    document.envelope = envelopeOf(texts);
    document.result = textOf(texts, "Result");
    document.errorCategory = textOf(texts, "ErrorCategory");
    document.errorCode = textOf(texts, "ErrorCode");
    document.errorDescription = textOf(texts, "ErrorDescription");
    readTree(textOf(texts, document.isRequest ? "RequestData" : "ResponseData"), document);
    return document;
}

QByteArray withId(const QByteArray& bytes, const QByteArray& id)
{
    return withContent(bytes, "RequestId", id);
}

QByteArray question(const QByteArray& request, int command)
{
    const QByteArray bytes = withContent(request, "Command", QByteArray::number(command));
    return withContent(bytes, "RequestData", "<![CDATA[]]>");
}

QByteArray refusal(const XmlDocument& request, const QString& description)
{
    QByteArray bytes;
    QXmlStreamWriter writer(&bytes);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("ArmResponse"));
    writer.writeStartElement(QStringLiteral("ResponseBody"));
    writer.writeTextElement(QStringLiteral("RequestId"), request.id);
    writer.writeTextElement(QStringLiteral("Command"), QString::number(request.command));
    writer.writeTextElement(QStringLiteral("Result"), QStringLiteral("1"));
    // A request that cannot be done as things are.
    writer.writeTextElement(QStringLiteral("ErrorCategory"), QStringLiteral("1"));
    writer.writeTextElement(QStringLiteral("ErrorCode"), QStringLiteral("1"));
    writer.writeTextElement(QStringLiteral("ErrorDescription"), description);
    writer.writeEndElement();
    writer.writeStartElement(QStringLiteral("ResponseData"));
    writer.writeCDATA(QString());
    writer.writeEndDocument();
    return bytes;
}

} // namespace trace::xmldocument
