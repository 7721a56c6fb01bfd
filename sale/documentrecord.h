#pragma once

#include <QJsonObject>

namespace sale {

struct StoredDocument;

/// All that the journal has of a document; with its body, its attempts and theirs.
QJsonObject recordJson(const StoredDocument& document);
/// The same without bodies and attempts, as lists have it.
QJsonObject recordSummary(const StoredDocument& document);

} // namespace sale
