#pragma once

#include "finding.h"

#include <QJsonArray>
#include <QList>

namespace frctl {

/// For a terminal: control characters are shown, not sent there.
QString findingLine(const receipt::Finding& finding);
/// path, given and text of each.
QJsonArray findingsJson(const QList<receipt::Finding>& findings);
/// A text whose control characters are shown, the group separator of marking codes as <GS>.
QString shownText(const QString& text);

} // namespace frctl
