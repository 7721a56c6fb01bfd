#pragma once

#include "register/fiscalrecord.h"

#include <QJsonObject>

namespace emulator {

struct Cashier;
struct Document;
struct Parts;

/// What goes into the fiscal drive and into the journal.
namespace recording {

/// Stores a document in the fiscal drive, and its entry in the journal with all that the drive has added.
FiscalRecord store(Parts& parts, FiscalType type, QJsonObject entry, const Cashier& cashier);
FiscalRecord storeReceipt(Parts& parts, const Document& receipt);
/// A cash-in or cash-out is no document of the fiscal drive, so its entry has neither number nor sign.
void noteMoney(Parts& parts, const Document& money);

} // namespace recording

} // namespace emulator
