#include "requestparams.h"

#include "names.h"
#include "xmlwriter.h"

#include <bytestohexutils.h>
#include <decimals.h>

#include <QDateTime>
#include <QDomDocument>

namespace spfxml {

namespace {

RequestParams::EParamType typeOf(const QDomElement& element)
{
    return static_cast<RequestParams::EParamType>(element.attribute(names::tree::type).toInt());
}

/// Does to a document what XmlWriter does to a text.
class ElementWriter
{
public:
    explicit ElementWriter(QDomDocument& document)
        : m_document(document)
    {
    }

    void open(const QString& tag)
    {
        const QDomElement element = m_document.createElement(tag);
        if (m_root.isNull())
            m_root = element;
        else
            m_open.appendChild(element);
        m_open = element;
    }
    void attribute(const QString& name, const QString& value) { m_open.setAttribute(name, value); }
    void text(const QString& text) { m_open.appendChild(m_document.createTextNode(text)); }
    void close() { m_open = m_open.parentNode().toElement(); }

    const QDomElement& root() const { return m_root; }

private:
    QDomDocument& m_document;
    QDomElement m_root;
    QDomElement m_open;
};

// Not isCharacterData(): a comment counts as that, and from one Qt release to the next a CDATA section does.
bool isText(const QDomNode& node)
{
    return node.isText() || node.isCDATASection();
}

} // namespace

RequestParams::RequestParams(EParamType type, const QString& name, const QVariant& value)
    : m_type(type)
    , m_name(name)
    , m_value(value)
{
}

RequestParams::RequestParams(EParamType type, EFrDriver::RequisiteTypes requisite, const QVariant& value)
    : RequestParams(type, QString::number(requisite), value)
{
}

RequestParams::RequestParams(EParamType type, const QString& name, const QList<RequestParams>& params)
    : m_type(type)
    , m_name(name)
    , m_params(params)
{
}

RequestParams::RequestParams(
    EParamType type, EFrDriver::RequisiteTypes requisite, const QList<RequestParams>& params)
    : RequestParams(type, QString::number(requisite), params)
{
}

QString RequestParams::getFormattedValue() const
{
    switch (m_type) {
    case EParamType::Sum:
        return moneyText(m_value.toDouble());
    case EParamType::Quantity:
        return quantityText(m_value.toDouble());
    case EParamType::DateTime:
        return m_value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
    case EParamType::DateTimeMs:
        return m_value.toDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
    case EParamType::Byte:
        return bytestohexutils::byteToHexStr(
            static_cast<unsigned char>(m_value.toInt() & 0xFF), QStringLiteral("0x"));
    default:
        return m_value.toString();
    }
}

template <typename Writer>
void RequestParams::write(Writer& writer) const
{
    writer.open(names::tree::node);
    writer.attribute(names::tree::name, m_name);
    writer.attribute(names::tree::type, QString::number(static_cast<int>(m_type)));
    if (!m_value.isNull())
        writer.text(getFormattedValue());
    for (const RequestParams& param : m_params)
        param.write(writer);
    writer.close();
}

QDomElement RequestParams::toElement(QDomDocument& document) const
{
    ElementWriter writer(document);
    write(writer);
    return writer.root();
}

// Not by way of a document: that takes fifty times the memory of the text, which shows with receipts of many
// positions.
QString RequestParams::toString() const
{
    if (m_value.isNull() && m_params.isEmpty())
        return {};
    XmlWriter writer;
    write(writer);
    return writer.result();
}

RequestParams RequestParams::fromElement(const QDomElement& element)
{
    if (element.isNull())
        return {};
    QList<RequestParams> params;
    for (QDomNode node = element.firstChild(); !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        const QDomNode first = node.firstChild();
        if (isText(first))
            params.append({typeOf(child), child.attribute(names::tree::name), QVariant(first.nodeValue())});
        else
            params.append(fromElement(child));
    }
    return {typeOf(element), element.attribute(names::tree::name), params};
}

} // namespace spfxml
