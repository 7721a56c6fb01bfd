#include "findingoutput.h"

#include <QJsonObject>

namespace frctl {

QJsonArray findingsJson(const QList<receipt::Finding>& findings)
{
    QJsonArray json;
    for (const receipt::Finding& finding : findings)
        json.append(QJsonObject{{QStringLiteral("path"), finding.path},
            {QStringLiteral("given"), finding.given}, {QStringLiteral("text"), finding.reason}});
    return json;
}

} // namespace frctl
