#include "findingsjson.h"

namespace sale {

QJsonObject findingJson(const receipt::Finding& finding)
{
    return {{QStringLiteral("path"), finding.path}, {QStringLiteral("given"), finding.given},
        {QStringLiteral("text"), finding.reason}};
}

QJsonArray findingsJson(const QList<receipt::Finding>& findings)
{
    QJsonArray json;
    for (const receipt::Finding& finding : findings)
        json.append(findingJson(finding));
    return json;
}

receipt::Finding findingOf(const QJsonObject& json, receipt::Finding::Severity severity)
{
    const auto text = [&json](const char* name) { return json.value(QLatin1String(name)).toString(); };
    return {severity, text("path"), text("given"), text("text")};
}

} // namespace sale
