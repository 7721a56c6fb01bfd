#include "kktcounters.h"

#include "names.h"

#include <xmlutils.h>

#include <QDomDocument>

#include <array>

namespace spfxml {

namespace {

// Requisites with the sums of a shift by payment kind, kinds 0 to 4.
constexpr std::array paymentRequisites{EFrDriver::CashTotal, EFrDriver::ElectronicTotal,
    EFrDriver::PrepaymentTotal, EFrDriver::CreditTotal, EFrDriver::OtherTotal};

QDomElement block(const QDomDocument& document, const QString& name)
{
    return xmlutils::getElementByAttribute(document, names::tree::name, name);
}

double requisiteValue(const QDomElement& element, EFrDriver::RequisiteTypes requisite)
{
    return xmlutils::getValueByAttribute(element.childNodes(), names::tree::name, static_cast<int>(requisite))
        .toDouble();
}

// A register that counts receipts by more than 32 bits, or by something that is no number, has not counted.
qint32 wholeCount(double value)
{
    constexpr double limit = 2147483648.0;
    return value > -limit && value < limit ? static_cast<qint32>(value) : 0;
}

QString moneyValue(const QDomDocument& document, const QString& name)
{
    const QDomElement money = block(document, names::money::block);
    return xmlutils::getValueByAttribute(money.childNodes(), names::tree::name, name);
}

MoneyCounters moneyPair(const QDomDocument& document, const QString& countName, const QString& sumName)
{
    return {moneyValue(document, countName).toInt(), moneyValue(document, sumName).toDouble()};
}

} // namespace

KktCounters getKktCounters(const QDomDocument& document, EFrDriver::RequisiteTypes requisite)
{
    const QString requisiteName = QString::number(requisite);
    const QDomElement shift = xmlutils::getChildElementByAttribute(
        block(document, QString::number(EFrDriver::ShiftTotals)), names::tree::name, requisiteName);

    KktCounters counters;
    for (size_t kind = 0; kind < paymentRequisites.size(); ++kind)
        counters.payments.insert(static_cast<int>(kind), requisiteValue(shift, paymentRequisites.at(kind)));
    // Read as a fraction and cut, so that "3.0" counts 3: it is meant.
    counters.count = wholeCount(requisiteValue(shift, EFrDriver::ReceiptCount));
    counters.shiftSum = requisiteValue(shift, EFrDriver::ReceiptsSum);

    const QDomElement total = block(document, QString::number(EFrDriver::FnTotals));
    if (!total.isNull() && total.hasAttributes()) {
        counters.totalSum
            = requisiteValue(xmlutils::getChildElementByAttribute(total, names::tree::name, requisiteName),
                EFrDriver::ReceiptsSum);
    }
    return counters;
}

MoneyCounters getMoneyCounters(const QDomDocument& document, hw::fr::CheckType type)
{
    if (type == hw::fr::CheckCashIn)
        return moneyPair(document, names::money::inCount, names::money::inSum);
    if (type == hw::fr::CheckCashOut)
        return moneyPair(document, names::money::outCount, names::money::outSum);
    return {};
}

double getCashInDrawer(const QDomDocument& document)
{
    return moneyValue(document, names::money::inDrawer).toDouble();
}

} // namespace spfxml
