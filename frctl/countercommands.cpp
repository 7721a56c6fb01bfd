#include "countercommands.h"

#include "abstractfrdriver.h"
#include "decimals.h"
#include "errors.h"
#include "frctltr.h"
#include "receiptnames.h"

#include <QJsonArray>

namespace frctl {

namespace {

/// Zero without a sign, which JSON would keep.
double plainSum(double sum)
{
    return sum == 0.0 ? 0.0 : sum;
}

QJsonObject receiptSums(AbstractFrDriver& driver, hw::fr::CheckType type)
{
    const QMap<int, double> sums = driver.getCheckCounters(type);
    QJsonObject result;
    for (const receipt::NamedValue& kind : receipt::names::paymentKinds()) {
        if (sums.contains(kind.value))
            result.insert(QLatin1String(kind.name), plainSum(sums.value(kind.value)));
    }
    return result;
}

Output counters(AbstractFrDriver& driver)
{
    Output output;
    output.lines = driver.getCountersDescription();
    output.json = {{QStringLiteral("description"), QJsonArray::fromStringList(output.lines)},
        {QStringLiteral("sell"), receiptSums(driver, hw::fr::CheckSale)},
        {QStringLiteral("sellReturn"), receiptSums(driver, hw::fr::CheckSaleReturn)}};
    const auto addMoney = [&](const QString& name, const QString& text, hw::fr::CheckType type) {
        const MoneyCounters money = driver.getMoneyCounters(type);
        output.json.insert(name,
            QJsonObject{
                {QStringLiteral("count"), money.count}, {QStringLiteral("sum"), plainSum(money.sum)}});
        output.lines.append(text.arg(money.count).arg(fixedDecimals(money.sum, 2)));
    };
    addMoney(QStringLiteral("cashIn"), tr("cash in: %1, sum %2"), hw::fr::CheckCashIn);
    addMoney(QStringLiteral("cashOut"), tr("cash out: %1, sum %2"), hw::fr::CheckCashOut);
    return output;
}

QJsonValue plainValue(const QVariant& value)
{
    return value.userType() == QMetaType::Double ? QJsonValue(plainSum(value.toDouble()))
                                                 : QJsonValue::fromVariant(value);
}

QString shown(const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("-");
    return value.userType() == QMetaType::Double ? fixedDecimals(value.toDouble(), 2) : value.toString();
}

Output registerTable(const QStringList& names, const QList<QVariant>& values)
{
    Output output;
    QJsonArray registers;
    for (qsizetype position = 0; position < values.size(); ++position) {
        const QString name = names.value(position);
        const QVariant& value = values.at(position);
        output.lines.append(
            QStringLiteral("%1 %2 %3").arg(position, 2).arg(name.leftJustified(30), shown(value)));
        registers.append(QJsonObject{{QStringLiteral("position"), static_cast<int>(position)},
            {QStringLiteral("name"), name}, {QStringLiteral("value"), plainValue(value)}});
    }
    output.json.insert(QStringLiteral("registers"), registers);
    return output;
}

Output registersAtBegin(AbstractFrDriver& driver, const Options& options)
{
    const KkmRegisterBeg data = driver.getKkmRegisterBeg();
    options.answer->drive = data.fnNumber;
    return registerTable(
        {QStringLiteral("producerCode"), QStringLiteral("producerName"), QStringLiteral("modelCode"),
            QStringLiteral("modelName"), QStringLiteral("serialNumber"), QStringLiteral("totalSales"),
            QStringLiteral("cashInDrawer"), QStringLiteral("shiftNumber"),
            QStringLiteral("registrationNumber"), QStringLiteral("fnNumber")},
        {data.producerCode, data.producerName, data.modelCode, data.modelName, data.serialNumber,
            data.totalSales, data.cashInDrawer, data.shiftNumber, data.registrationNumber, data.fnNumber});
}

void appendByKind(QStringList& names, const QString& name)
{
    for (const receipt::NamedValue& kind : receipt::names::paymentKinds())
        names.append(name + QLatin1Char('.') + QLatin1String(kind.name));
}

Output registersAtEnd(AbstractFrDriver& driver)
{
    QStringList names{QStringLiteral("totalSales"), QStringLiteral("cashInDrawer"),
        QStringLiteral("shiftRevenue"), QStringLiteral("saleCount"), QStringLiteral("saleSum")};
    appendByKind(names, QStringLiteral("salePayments"));
    names << QStringLiteral("reserved") << QStringLiteral("returnCount") << QStringLiteral("returnSum");
    appendByKind(names, QStringLiteral("returnPayments"));
    names << QStringLiteral("reserved");
    appendByKind(names, QStringLiteral("paymentNames"));
    names << QStringLiteral("reserved") << QStringLiteral("cashInSum") << QStringLiteral("cashInCount")
          << QStringLiteral("cashOutSum") << QStringLiteral("cashOutCount");
    return registerTable(names, driver.getKkmRegisterEnd().toList());
}

} // namespace

Task prepareCounters(const Options&)
{
    return onRegister(counters);
}

Task prepareRegisters(const Options& options)
{
    const QString what = options.arguments.constFirst();
    if (what == QStringLiteral("begin"))
        return onRegister([options](AbstractFrDriver& driver) { return registersAtBegin(driver, options); });
    if (what == QStringLiteral("end"))
        return onRegister(registersAtEnd);
    throw UsageError(tr("registers: \"%1\" is neither begin nor end").arg(what));
}

} // namespace frctl
