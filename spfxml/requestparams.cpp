#include "requestparams.h"

#include <bytestohexutils.h>

#include <QDateTime>
#include <QDomDocument>

namespace spfxml {

namespace {

QString elementName()
{
    return QStringLiteral("pa");
}

QString nameAttribute()
{
    return QStringLiteral("n");
}

QString typeAttribute()
{
    return QStringLiteral("t");
}

RequestParams::EParamType typeOf(const QDomElement& element)
{
    return static_cast<RequestParams::EParamType>(element.attribute(typeAttribute()).toInt());
}

// In Qt 6.4 a CDATA section does not count as character data.
bool isText(const QDomNode& node)
{
    return node.isCharacterData() || node.isCDATASection();
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
        return QString::number(m_value.toDouble(), 'f', 2);
    case EParamType::Quantity:
        return QString::number(m_value.toDouble(), 'f', 3);
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

QDomElement RequestParams::toElement(QDomDocument& document) const
{
    QDomElement element = document.createElement(elementName());
    element.setAttribute(nameAttribute(), m_name);
    element.setAttribute(typeAttribute(), static_cast<int>(m_type));
    if (!m_value.isNull())
        element.appendChild(document.createTextNode(getFormattedValue()));
    for (const RequestParams& param : m_params)
        element.appendChild(param.toElement(document));
    return element;
}

QString RequestParams::toString() const
{
    if (m_value.isNull() && m_params.isEmpty())
        return {};
    QDomDocument document;
    document.appendChild(toElement(document));
    return document.toString(1);
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
            params.append({typeOf(child), child.attribute(nameAttribute()), QVariant(first.nodeValue())});
        else
            params.append(fromElement(child));
    }
    return {typeOf(element), element.attribute(nameAttribute()), params};
}

} // namespace spfxml
