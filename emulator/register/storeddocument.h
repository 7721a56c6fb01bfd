#pragma once

#include "register/fiscalrecord.h"
#include "tape/page.h"

#include <QJsonObject>

namespace emulator {

/// A document of the fiscal drive with what the register has beside it.
struct StoredDocument
{
    FiscalRecord record;
    /// Its entry in the journal.
    QJsonObject entry;
    /// What was printed of it.
    tape::Page page;
};

} // namespace emulator
