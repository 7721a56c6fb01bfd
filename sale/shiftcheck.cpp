#include "shiftcheck.h"

#include "documentstore.h"
#include "marknoting.h"
#include "misreading.h"
#include "movement.h"
#include "shiftopening.h"

namespace sale {

namespace {

/// Of the receipts since the last Z report.
PaymentSums journalSums(const DocumentStore& store, const QString& drive, DocumentKind kind)
{
    PaymentSums sums;
    store.look({.drive = drive, .order = DocumentQuery::LastBegun}, [&](const StoredDocument& document) {
        if (document.state != DocumentState::Issued)
            return true;
        const auto movement = Movement::fromJson(document.lastAttempt().start.movement);
        for (auto payment = movement.payments.cbegin();
             movement.kind == kind && payment != movement.payments.cend(); ++payment)
            sums[payment.key()] += payment.value() * document.times;
        return movement.kind != DocumentKind::ShiftClosing;
    });
    return sums;
}

} // namespace

std::optional<QList<SumDifference>> shiftDifferences(
    AbstractFrDriver& driver, const DocumentStore& store, const RegisterLine& line)
{
    if (!isShiftOpen(driver, line))
        return std::nullopt;
    QList<SumDifference> found;
    for (const DocumentKind kind : {DocumentKind::Sale, DocumentKind::SaleReturn}) {
        const DriveMark mark = noteMark(driver, line, kind);
        const PaymentSums counted = mark.sums.value(kind);
        const PaymentSums known = journalSums(store, mark.drive, kind);
        const PaymentSums rest = difference(counted, known);
        for (auto payment = rest.cbegin(); payment != rest.cend(); ++payment)
            found.append({kind, payment.key(), counted.value(payment.key()), known.value(payment.key())});
    }
    return found;
}

} // namespace sale
