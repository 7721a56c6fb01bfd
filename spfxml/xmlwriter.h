#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace spfxml {

/// Writes the text of an XML document, element by element, each on a line of its own and indented by one
/// blank a level. It alone knows how a text is escaped.
class XmlWriter
{
public:
    void declaration();
    void open(const QString& tag);
    /// Of the element opened last, before there is anything in it.
    void attribute(const QString& name, QStringView value);
    /// Also an empty text is one: <a></a> instead of <a/>.
    void text(QStringView text);
    void cdata(QStringView text);
    void close();
    /// An element that holds a text and nothing else.
    void element(const QString& tag, QStringView content);

    const QString& result() const { return m_xml; }

private:
    /// Where the writer stands in the element that is open: a blank behind a text would be part of it.
    enum class Place { Tag, Text, Line };

    void indent();
    void endTag();

    QString m_xml;
    QStringList m_open;
    Place m_place = Place::Line;
};

} // namespace spfxml
