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

void appendEncoded(QString& text, const QString& value, bool isAttribute)
{
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar character = value.at(i);
        const char16_t code = character.unicode();
        if (code == u'<')
            text += QLatin1String("&lt;");
        else if (code == u'&')
            text += QLatin1String("&amp;");
        else if (code == u'"' && isAttribute)
            text += QLatin1String("&quot;");
        else if (code == u'>' && i >= 2 && value.at(i - 1) == u']' && value.at(i - 2) == u']')
            text += QLatin1String("&gt;");
        else if (code == u'\r' || (isAttribute && (code == u'\n' || code == u'\t')))
            text += QStringLiteral("&#x%1;").arg(code, 0, 16);
        else
            text += character;
    }
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
    QString text;
    if (!m_value.isNull() || !m_params.isEmpty())
        write(text, 0);
    return text;
}

// What a document of toElement writes with an indentation of one, without the tree: that takes fifty times
// the memory of the text, which shows with receipts of many positions.
void RequestParams::write(QString& text, qsizetype depth) const
{
    const auto indent = [&text](qsizetype count) { text += QString(count, QLatin1Char(' ')); };
    text += QLatin1String("<pa n=\"");
    appendEncoded(text, m_name, true);
    text += QLatin1String("\" t=\"") + QString::number(static_cast<int>(m_type)) + QLatin1Char('"');
    const bool hasText = !m_value.isNull();
    if (!hasText && m_params.isEmpty()) {
        text += QLatin1String("/>\n");
        return;
    }
    text += QLatin1Char('>');
    if (hasText)
        appendEncoded(text, getFormattedValue(), false);
    else
        text += QLatin1Char('\n');
    for (qsizetype i = 0; i < m_params.size(); ++i) {
        // Blanks behind a text would be part of it.
        indent(hasText && i == 0 ? 0 : depth + 1);
        m_params.at(i).write(text, depth + 1);
    }
    if (!m_params.isEmpty())
        indent(depth);
    text += QLatin1String("</pa>\n");
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
