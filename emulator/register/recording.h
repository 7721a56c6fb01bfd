#pragma once

#include "register/factorydocuments.h"
#include "register/fiscalrecord.h"

#include <QJsonObject>

namespace emulator {

struct Cashier;
struct Document;
struct Identity;
struct Parts;
struct Registration;

/// What goes into the fiscal drive and into the journal.
namespace recording {

/// What a fiscal drive was put in with; the journal has no entries for it.
FactoryDocuments factoryDocuments(
    const Identity& identity, const Registration& registration, const QDateTime& now);
/// Stores a document in the fiscal drive, and its entry in the journal with all that the drive has added.
FiscalRecord store(Parts& parts, FiscalType type, QJsonObject entry, const Cashier& cashier);
FiscalRecord storeReceipt(Parts& parts, const Document& receipt);
/// A cash-in or cash-out is no document of the fiscal drive, so its entry has neither number nor sign.
void noteMoney(Parts& parts, const Document& money);

} // namespace recording

} // namespace emulator
