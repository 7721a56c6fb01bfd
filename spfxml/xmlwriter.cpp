#include "xmlwriter.h"

#include <QLatin1String>

namespace spfxml {

namespace {

enum class Where { Text, Attribute };

// What stands for a character, empty for one that stands for itself.
QLatin1String reference(QStringView text, qsizetype index, Where where)
{
    const bool isAttribute = where == Where::Attribute;
    switch (text.at(index).unicode()) {
    case u'<':
        return QLatin1String("&lt;");
    case u'&':
        return QLatin1String("&amp;");
    case u'>':
        return text.first(index).endsWith(u"]]") ? QLatin1String("&gt;") : QLatin1String();
    case u'\r':
        return QLatin1String("&#xd;");
    case u'"':
        return isAttribute ? QLatin1String("&quot;") : QLatin1String();
    case u'\n':
        return isAttribute ? QLatin1String("&#xa;") : QLatin1String();
    case u'\t':
        return isAttribute ? QLatin1String("&#x9;") : QLatin1String();
    default:
        return {};
    }
}

void appendEscaped(QString& xml, QStringView text, Where where)
{
    qsizetype written = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QLatin1String escaped = reference(text, index, where);
        if (escaped.isEmpty())
            continue;
        xml.append(text.sliced(written, index - written)).append(escaped);
        written = index + 1;
    }
    xml.append(text.sliced(written));
}

} // namespace

void XmlWriter::declaration()
{
    m_xml += QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
}

void XmlWriter::open(const QString& tag)
{
    if (m_place == Place::Tag)
        m_xml += QLatin1String(">\n");
    if (m_place != Place::Text)
        indent();
    m_xml.append(QLatin1Char('<')).append(tag);
    m_open.append(tag);
    m_place = Place::Tag;
}

void XmlWriter::attribute(const QString& name, QStringView value)
{
    m_xml.append(QLatin1Char(' ')).append(name).append(QLatin1String("=\""));
    appendEscaped(m_xml, value, Where::Attribute);
    m_xml += QLatin1Char('"');
}

void XmlWriter::text(QStringView text)
{
    endTag();
    appendEscaped(m_xml, text, Where::Text);
}

void XmlWriter::cdata(QStringView text)
{
    endTag();
    const QLatin1String end("]]>");
    m_xml += QLatin1String("<![CDATA[");
    // An end inside the text is split over two sections.
    for (qsizetype at = text.indexOf(end); at >= 0; at = text.indexOf(end)) {
        m_xml.append(text.first(at)).append(QLatin1String("]]]]><![CDATA[>"));
        text = text.sliced(at + end.size());
    }
    m_xml.append(text).append(end);
}

void XmlWriter::close()
{
    const QString tag = m_open.takeLast();
    if (m_place == Place::Line)
        indent();
    if (m_place == Place::Tag)
        m_xml += QLatin1String("/>\n");
    else
        m_xml.append(QLatin1String("</")).append(tag).append(QLatin1String(">\n"));
    m_place = Place::Line;
}

void XmlWriter::element(const QString& tag, QStringView content)
{
    open(tag);
    text(content);
    close();
}

void XmlWriter::indent()
{
    m_xml.resize(m_xml.size() + m_open.size(), QLatin1Char(' '));
}

void XmlWriter::endTag()
{
    if (m_place == Place::Tag)
        m_xml += QLatin1Char('>');
    m_place = Place::Text;
}

} // namespace spfxml
