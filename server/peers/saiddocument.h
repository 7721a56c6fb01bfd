#pragma once

#include "storeddocument.h"

#include <QJsonObject>

namespace frserver {

/// How a document stands, as services tell each other.
QJsonObject saidDocument(const sale::StoredDocument& document);
/// With what was said of it alone.
sale::StoredDocument documentSaid(const QJsonObject& json);

} // namespace frserver
