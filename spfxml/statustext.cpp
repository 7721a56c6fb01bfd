#include "statustext.h"

#include "names.h"

#include <xmlutils.h>

namespace spfxml {

StatusTexts::StatusTexts(const QDomDocument& answer)
{
    for (QDomElement element = answer.documentElement(); !element.isNull();
         element = xmlutils::nextElement(element)) {
        const QString key = element.attribute(names::tree::name);
        if (!m_elements.contains(key))
            m_elements.insert(key, element);
    }
}

QString indentedBlock(const QStringList& lines)
{
    static const QString indent = QStringLiteral("  ");
    return indent + lines.join(QLatin1Char('\n') + indent);
}

} // namespace spfxml
