#pragma once

#include <QString>

namespace sale {

class DocumentStore;

/// 8 to 64 of A-Z a-z 0-9 . _ : -
bool isDocumentId(const QString& id);
/// Throws InvalidDocumentId for a text that is none, unless the journal has it: earlier releases took other
/// ids, too, and theirs are still asked for. Throws JournalError.
void requireDocumentId(const DocumentStore& store, const QString& id);
/// A new one, for a document that the caller gave none.
QString newDocumentId();

} // namespace sale
