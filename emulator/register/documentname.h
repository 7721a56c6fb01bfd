#pragma once

#include "register/fiscalrecord.h"

namespace emulator {

/// What a document of the fiscal drive is called.
struct DocumentName
{
    FiscalType type;
    /// Tag 1054 of a receipt: 1 sale, 2 return; 0 for what is none.
    int settlement;
    /// In the journal.
    QString word;
    /// On paper and in tag 1000.
    QString title;
};

namespace documentnames {

/// The settlement is looked at for receipts only.
DocumentName find(FiscalType type, int settlement = 0);
DocumentName byWord(const QString& word);
DocumentName byTitle(const QString& title, int settlement);
/// The journal's words for documents of the fiscal drive.
QStringList words();
/// Words for tag 1054.
QString settlement(int settlement);

} // namespace documentnames

} // namespace emulator
