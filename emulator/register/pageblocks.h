#pragma once

namespace emulator {

class Page;
struct Cashier;
struct FiscalRecord;
struct Parts;

/// What several kinds of page have in common.
namespace pageblocks {

/// What the register is, logo and header lines.
void addHeader(Page& page, const Parts& parts);
void addTail(Page& page, const Parts& parts);
/// Number of the shift and time of the page, which is no document of the fiscal drive.
void addShift(Page& page, const Parts& parts);
/// Who made the document, on which register, and what the fiscal drive made of it.
void addFiscalData(Page& page, const Parts& parts, const FiscalRecord& record, const Cashier& cashier);
/// The counters of the shift.
void addTotals(Page& page, const Parts& parts);

} // namespace pageblocks

} // namespace emulator
