#pragma once

#include "storeddocument.h"

#include <QJsonObject>
#include <QStringList>

namespace frctl {

/// All that the journal has of a document; with its body, its attempts and theirs.
QJsonObject storedJson(const sale::StoredDocument& document);
/// The same without bodies and attempts, as lists have it.
QJsonObject storedSummary(const sale::StoredDocument& document);
/// One line of a list.
QString storedLine(const sale::StoredDocument& document);
/// The lines of one document with its attempts.
QStringList storedLines(const sale::StoredDocument& document);

} // namespace frctl
