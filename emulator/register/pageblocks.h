#pragma once

namespace emulator {

class PageWriter;
struct Cashier;
struct FiscalRecord;
struct Parts;

/// What several kinds of page have in common.
namespace pageblocks {

/// What the register is, logo and header lines.
void addHeader(PageWriter& page, const Parts& parts);
void addTail(PageWriter& page, const Parts& parts);
/// Number of the shift and time of the page, which is no document of the fiscal drive.
void addShift(PageWriter& page, const Parts& parts);
/// Who made the document, on which register, and what the fiscal drive made of it.
void addFiscalData(PageWriter& page, const Parts& parts, const FiscalRecord& record, const Cashier& cashier);
/// The counters of the shift.
void addTotals(PageWriter& page, const Parts& parts);

} // namespace pageblocks

} // namespace emulator
