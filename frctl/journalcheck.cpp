#include "journalcheck.h"

#include "frctltr.h"
#include "money.h"
#include "receiptnames.h"
#include "shiftcheck.h"

#include <QJsonArray>

namespace frctl {

namespace {

QString paymentName(int payment)
{
    for (const receipt::NamedValue& known : receipt::names::paymentKinds()) {
        if (known.value == payment)
            return QLatin1String(known.name);
    }
    return QString::number(payment);
}

QString differenceText(const sale::SumDifference& difference)
{
    return tr("%1, %2: the register has %3, this journal %4: the difference of %5 "
              "is of receipts that others made")
        .arg(documentKindName(difference.kind), paymentName(difference.payment),
            receipt::moneyText(difference.inRegister), receipt::moneyText(difference.inJournal),
            receipt::moneyText(difference.inRegister - difference.inJournal));
}

QJsonObject differenceJson(const sale::SumDifference& difference)
{
    return {{QStringLiteral("kind"), documentKindName(difference.kind)},
        {QStringLiteral("payment"), paymentName(difference.payment)},
        {QStringLiteral("register"), receipt::roubles(difference.inRegister)},
        {QStringLiteral("journal"), receipt::roubles(difference.inJournal)}};
}

} // namespace

Output checkFile(const Options& options)
{
    const QStringList damages = options.journal->store().damages();
    Output output;
    output.lines = damages.isEmpty() ? QStringList{tr("the journal is sound")} : damages;
    output.json = {{QStringLiteral("file"), options.journal->store().place()},
        {QStringLiteral("damages"), QJsonArray::fromStringList(damages)}};
    output.status = damages.isEmpty() ? ExitSuccess : ExitFailure;
    return output;
}

Output checkShift(AbstractFrDriver& driver, const Options& options)
{
    Output output = checkFile(options);
    const auto differences = sale::shiftDifferences(driver, options.journal->store(), options.line());
    if (!differences) {
        output.lines.append(tr("the shift is closed: no counters to compare"));
        return output;
    }
    QJsonArray json;
    for (const sale::SumDifference& difference : *differences) {
        output.lines.append(differenceText(difference));
        json.append(differenceJson(difference));
        output.status = ExitFailure;
    }
    output.json.insert(QStringLiteral("differences"), json);
    if (differences->isEmpty())
        output.lines.append(tr("the counters of the shift have the journal's receipts and no others"));
    return output;
}

} // namespace frctl
