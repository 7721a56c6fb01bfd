#include "statustext.h"

#include "names.h"

#include <QDomDocument>

namespace spfxml {

StatusTexts::StatusTexts(const QDomDocument& answer)
{
    add(answer.documentElement());
}

void StatusTexts::add(const QDomElement& element)
{
    const QString key = element.attribute(names::tree::name);
    if (!m_elements.contains(key))
        m_elements.insert(key, element);
    for (QDomElement child = element.firstChildElement(); !child.isNull(); child = child.nextSiblingElement())
        add(child);
}

QString indentedBlock(const QStringList& lines)
{
    static const QString indent = QStringLiteral("  ");
    return indent + lines.join(QLatin1Char('\n') + indent);
}

} // namespace spfxml
