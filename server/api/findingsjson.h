#pragma once

#include "finding.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>

namespace frserver {

/// Those of the severity: path, given, text.
inline QJsonArray findingsJson(const QList<receipt::Finding>& findings, receipt::Finding::Severity severity)
{
    QJsonArray json;
    for (const receipt::Finding& finding : findings) {
        if (finding.severity == severity)
            json.append(QJsonObject{{QStringLiteral("path"), finding.path},
                {QStringLiteral("given"), finding.given}, {QStringLiteral("text"), finding.reason}});
    }
    return json;
}

} // namespace frserver
