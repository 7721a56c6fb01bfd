#pragma once

#include "documentstore.h"

namespace sale {

/// Whether a person may say that the document, of which its register could not tell, has that number of its
/// fiscal drive: one that the drive had reached before it was begun, that another document has, or that the
/// drive had not reached when there was no more to come of the document, is none. Reached is what whoever has
/// asked the register since was told, 0 when nobody has; what later documents tell is known. Throws
/// NotResolvable.
void requirePossibleNumber(
    DocumentStore& store, const StoredDocument& document, quint32 number, quint32 reached = 0);

} // namespace sale
