#include "statustext.h"

#include <xmlutils.h>

#include <QDomElement>

namespace spfxml {

QString statusText(const QDomDocument& document, const QString& key)
{
    return xmlutils::getElementByAttribute(document, QStringLiteral("n"), key).text();
}

int statusNumber(const QDomDocument& document, const QString& key)
{
    return statusText(document, key).toInt();
}

QString indentedBlock(const QStringList& lines)
{
    static const QString indent = QStringLiteral("  ");
    return indent + lines.join(QLatin1Char('\n') + indent);
}

} // namespace spfxml
