#pragma once

#include "api/till.h"
#include "storeddocument.h"

#include <QJsonObject>

namespace frserver {

/// What the interface says of a document: the words of docs/output.schema.json, and the posting's own beside
/// them. The register is the one that is to make it; null for one that is not configured.
QJsonObject documentView(const sale::StoredDocument& document, const Till* till, bool isReplayed = false);
/// The same with the body and what a person has said.
QJsonObject wholeDocumentView(const sale::StoredDocument& document, const Till* till);
/// As lists have it.
QJsonObject documentSummary(const sale::StoredDocument& document, const Till* till);

} // namespace frserver
