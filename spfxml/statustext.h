#pragma once

#include <QDomElement>
#include <QHash>
#include <QString>
#include <QStringList>

class QDomDocument;

namespace spfxml {

/// The elements of an answer by their keys (attribute n), found in one walk. Of those that share a key the
/// first counts.
class StatusTexts
{
public:
    explicit StatusTexts(const QDomDocument& answer);

    /// Text of the element with that key, empty when the answer does not hold it.
    QString text(const QString& key) const { return m_elements.value(key).text(); }
    /// The same as a number, 0 when it is none.
    int number(const QString& key) const { return text(key).toInt(); }

private:
    void add(const QDomElement& element);

    QHash<QString, QDomElement> m_elements;
};

/// The lines as one text, each indented by two blanks.
QString indentedBlock(const QStringList& lines);

} // namespace spfxml
