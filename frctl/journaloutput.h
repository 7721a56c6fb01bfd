#pragma once

#include "storeddocument.h"

#include <QString>
#include <QStringList>

namespace frctl {

/// One line of a list.
QString storedLine(const sale::StoredDocument& document);
/// The lines of one document with its attempts.
QStringList storedLines(const sale::StoredDocument& document);

} // namespace frctl
