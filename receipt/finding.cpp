#include "finding.h"

#include "showntext.h"

namespace receipt {

QString Finding::text() const
{
    QString result = path.isEmpty() ? QString() : path + QStringLiteral(": ");
    if (!given.isEmpty())
        result += QStringLiteral("\"%1\" ").arg(given);
    return shownText(result + reason);
}

} // namespace receipt
