#pragma once

#include <QString>
#include <QStringList>

namespace emulator {

struct Cashier;
struct Document;
struct FiscalRecord;
struct Item;
struct Parts;

/// The pages that come out of the printer.
namespace pages {

/// The lines of one position in the body of a receipt.
QStringList position(const Parts& parts, const Item& item);
QStringList receipt(const Parts& parts, const Document& document, const FiscalRecord& record);
QStringList money(const Parts& parts, const Document& document);
QStringList text(const Parts& parts, const Document& document);
QStringList cancelled(const Parts& parts, const Document& document);
/// The running totals of the shift.
QStringList totals(const Parts& parts, const Cashier& cashier);
QStringList report(
    const Parts& parts, const QString& title, const FiscalRecord& record, const Cashier& cashier);
/// A document of the fiscal drive once more.
QStringList copy(const Parts& parts, const FiscalRecord& record);

} // namespace pages

} // namespace emulator
