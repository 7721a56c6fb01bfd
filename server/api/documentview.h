#pragma once

#include "storeddocument.h"

#include <QJsonObject>

namespace frserver {

class Api;

/// What the interface says of a document: the words of docs/output.schema.json, and the posting's own beside
/// them.
QJsonObject documentView(const Api& api, const sale::StoredDocument& document, bool isReplayed = false);
/// The same with the body and what a person has said.
QJsonObject wholeDocumentView(const Api& api, const sale::StoredDocument& document);
/// As lists have it, with total and numbers of the receipt, of one that was found without its attempts.
QJsonObject documentSummary(const Api& api, const sale::StoredDocument& document);

/// The last receipt of the register, as lists have it; null for none, and when the journal does not tell.
QJsonValue lastReceipt(const Api& api, const QString& registerName);

} // namespace frserver
