#pragma once

#include "finding.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QList>

namespace sale {

QJsonObject findingJson(const receipt::Finding& finding);
/// path, given (the text itself) and text of each.
QJsonArray findingsJson(const QList<receipt::Finding>& findings);
/// The other way; the severity is told by where it stands.
receipt::Finding findingOf(const QJsonObject& json, receipt::Finding::Severity severity);

} // namespace sale
