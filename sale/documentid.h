#pragma once

#include <QString>

namespace sale {

/// 8 to 64 of A-Z a-z 0-9 . _ : -
bool isDocumentId(const QString& id);
/// A new one, for a document that the caller gave none.
QString newDocumentId();

} // namespace sale
