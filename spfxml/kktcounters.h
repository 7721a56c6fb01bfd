#pragma once

#include <checktype.h>
#include <efrdriver.h>
#include <moneycounters.h>

#include <QMap>

class QDomDocument;

namespace spfxml {

/// Figures of one kind of receipt. Sums are roubles.
struct KktCounters
{
    /// Receipts in the shift.
    qint32 count = 0;
    double shiftSum = 0.0;
    /// Of the whole fiscal drive; 0 unless the device gives cumulative counters, which is a setting of its
    /// own.
    double totalSum = 0.0;
    /// Sums in the shift by payment kind, always 0 to 4.
    QMap<int, double> payments;
};

/// The counters of sales (requisite 1129) or returns (1130) out of the device's answer; what it lacks reads
/// as 0.
KktCounters getKktCounters(const QDomDocument& document, EFrDriver::RequisiteTypes requisite);

/// Cash put in or taken out in the shift; zeros for any other type.
MoneyCounters getMoneyCounters(const QDomDocument& document, hw::fr::CheckType type);

/// Cash in the drawer.
double getCashInDrawer(const QDomDocument& document);

} // namespace spfxml
