#pragma once

#include "finding.h"

#include <QJsonArray>
#include <QList>

namespace frctl {

/// path, given (the text itself) and text of each.
QJsonArray findingsJson(const QList<receipt::Finding>& findings);

} // namespace frctl
