#pragma once

#include "finding.h"

#include <QList>

namespace receipt {
struct Receipt;
}

namespace sale {

class JournalError;
class SaleJournal;

/// Warnings of the pieces that the journal knows as sold, or perhaps sold, and not as returned since; none
/// for a return. A sale of the id given does not count. Throws JournalError.
QList<receipt::Finding> soldMarks(
    const SaleJournal& journal, const receipt::Receipt& receipt, const QString& exceptId = {});

/// Of a journal that does not tell what was sold, or does not keep what is.
receipt::Finding journalWarning(const JournalError& error);

} // namespace sale
