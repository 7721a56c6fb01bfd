#pragma once

#include <QStringList>

namespace frctl {

/// "; did you mean NAME?" with the known name that the misspelt one is closest to, behind the prefix; empty
/// where none is close.
QString suggestion(const QString& misspelt, const QStringList& known, const QString& prefix = {});

} // namespace frctl
