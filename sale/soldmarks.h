#pragma once

#include "finding.h"

#include <QList>

namespace receipt {
struct Receipt;
}

namespace sale {

class DocumentStore;

/// Warnings of the pieces that the journal knows as sold, or perhaps sold, and not as returned since; none
/// for a return. A sale of the id given does not count. Throws JournalError.
QList<receipt::Finding> soldMarks(
    const DocumentStore& store, const receipt::Receipt& receipt, const QString& exceptId = {});

} // namespace sale
