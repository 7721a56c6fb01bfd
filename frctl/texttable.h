#pragma once

#include <QStringList>

namespace frctl {

/// Rows as lines with their columns below each other; all have as many. An empty cell is a hyphen.
QStringList textTable(const QList<QStringList>& rows);

} // namespace frctl
