#include "journalcheck.h"

#include "abstractfrdriver.h"
#include "marknoting.h"
#include "money.h"
#include "movement.h"
#include "receiptnames.h"
#include "shiftopening.h"

#include <QJsonArray>

namespace frctl {

namespace {

using sale::DocumentKind;
using sale::PaymentSums;

/// Of the receipts since the last Z report.
PaymentSums journalSums(const sale::DocumentStore& store, const QString& drive, DocumentKind kind)
{
    PaymentSums sums;
    for (const sale::StoredDocument& document :
        store.find({.drive = drive, .order = sale::DocumentQuery::LastBegun})) {
        if (document.state != sale::DocumentState::Issued)
            continue;
        const auto movement = sale::Movement::fromJson(document.attempts.constLast().start.movement);
        if (movement.kind == DocumentKind::ShiftClosing)
            break;
        if (movement.kind != kind)
            continue;
        for (auto payment = movement.payments.cbegin(); payment != movement.payments.cend(); ++payment)
            sums[payment.key()] += payment.value() * document.times;
    }
    return sums;
}

PaymentSums registerSums(AbstractFrDriver& driver, DocumentKind kind)
{
    const QMap<int, double> counters
        = driver.getCheckCounters(kind == DocumentKind::Sale ? hw::fr::CheckSale : hw::fr::CheckSaleReturn);
    PaymentSums sums;
    for (auto counter = counters.cbegin(); counter != counters.cend(); ++counter)
        sums[counter.key()] = qRound64(counter.value() * 100);
    return sums;
}

void compare(Output& output, QJsonArray& differences, DocumentKind kind, const PaymentSums& ours,
    const PaymentSums& theirs)
{
    for (const receipt::NamedValue& payment : receipt::names::paymentKinds()) {
        const qint64 inJournal = ours.value(payment.value);
        const qint64 inRegister = theirs.value(payment.value);
        if (inJournal == inRegister)
            continue;
        const QString name = documentKindName(kind);
        output.lines.append(
            QStringLiteral("%1, %2: the register has %3, this journal %4: the difference of %5 "
                           "is of receipts that others made")
                .arg(name, QLatin1String(payment.name), receipt::moneyText(inRegister),
                    receipt::moneyText(inJournal), receipt::moneyText(inRegister - inJournal)));
        differences.append(QJsonObject{{QStringLiteral("kind"), name},
            {QStringLiteral("payment"), QLatin1String(payment.name)},
            {QStringLiteral("register"), receipt::roubles(inRegister)},
            {QStringLiteral("journal"), receipt::roubles(inJournal)}});
    }
}

} // namespace

Output checkFile(const Options& options)
{
    const QStringList damages = options.journal->store().damages();
    Output output;
    output.lines = damages.isEmpty() ? QStringList{QStringLiteral("the journal is sound")} : damages;
    output.json = {{QStringLiteral("file"), options.journal->store().fileName()},
        {QStringLiteral("damages"), QJsonArray::fromStringList(damages)}};
    output.status = damages.isEmpty() ? ExitSuccess : ExitFailure;
    return output;
}

Output checkShift(AbstractFrDriver& driver, const Options& options)
{
    Output output = checkFile(options);
    if (!sale::isShiftOpen(driver, options.line())) {
        output.lines.append(QStringLiteral("the shift is closed: no counters to compare"));
        return output;
    }
    const QString drive = sale::noteMark(driver, options.line(), DocumentKind::Report).drive;
    QJsonArray differences;
    for (const DocumentKind kind : {DocumentKind::Sale, DocumentKind::SaleReturn})
        compare(output, differences, kind, journalSums(options.journal->store(), drive, kind),
            registerSums(driver, kind));
    output.json.insert(QStringLiteral("differences"), differences);
    if (differences.isEmpty())
        output.lines.append(
            QStringLiteral("the counters of the shift have the journal's receipts and no others"));
    else
        output.status = ExitFailure;
    return output;
}

} // namespace frctl
