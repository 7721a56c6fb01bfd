#pragma once

#include "tape/page.h"

namespace emulator {

struct Cashier;
struct Document;
struct FiscalRecord;
struct Item;
struct Parts;

/// The pages that come out of the printer.
namespace pages {

/// The lines of one position in the body of a receipt.
QList<tape::Line> position(const Parts& parts, const Item& item);
tape::Page receipt(const Parts& parts, const Document& document, const FiscalRecord& record);
tape::Page money(const Parts& parts, const Document& document);
tape::Page text(const Parts& parts, const Document& document);
tape::Page cancelled(const Parts& parts, const Document& document);
/// The running totals of the shift.
tape::Page totals(const Parts& parts, const Cashier& cashier);
tape::Page report(
    const Parts& parts, const QString& title, const FiscalRecord& record, const Cashier& cashier);
/// A document of the fiscal drive once more.
tape::Page copy(const Parts& parts, const FiscalRecord& record);

} // namespace pages

} // namespace emulator
