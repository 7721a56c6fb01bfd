#include "register/names.h"
#include "register/pageblocks.h"
#include "register/pages.h"
#include "register/pagewriter.h"
#include "register/parametertable.h"
#include "register/parts.h"
#include "register/settingtable.h"
#include "register/taxes.h"

namespace emulator::pages {

namespace {

void addTaxes(PageWriter& page, const Parts& parts, const QList<Item>& items)
{
    const QMap<int, Money> sums = taxes::sums(items);
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum)
        page.sum(QStringLiteral("СУММА ") + names::taxRate(parts.parameters, sum.key()), sum.value());
}

void addSettlement(PageWriter& page, const Parts& parts, const Document& document)
{
    page.sum(QStringLiteral("ИТОГ"), document.total());
    for (size_t kind = 0; kind < paymentKinds; ++kind) {
        if (const Money sum = document.payments[kind]; sum != 0)
            page.sum(names::paymentKind(parts.parameters, kind), sum);
    }
    if (document.change() > 0)
        page.sum(QStringLiteral("СДАЧА"), document.change());
    if (const QString above = parts.parameters.text(parameter::lineAboveTaxes); !above.isEmpty())
        page.text(above);
    addTaxes(page, parts, document.items);
    page.text(QStringLiteral("СНО: ") + names::taxSystems(document.taxSystem));
    if (!document.customer.isEmpty())
        page.text(QStringLiteral("ЭЛ. АДРЕС ПОКУПАТЕЛЯ: ") + document.customer);
}

// Who keeps the receipt, and where it can be read.
void addOperator(PageWriter& page, const Parts& parts)
{
    if (parts.settings.isOn(setting::operatorName))
        page.text(QStringLiteral("ОФД: ") + parts.state.registration.operatorName);
    if (parts.settings.isOn(setting::receiptSite))
        page.text(QStringLiteral("САЙТ ЧЕКОВ: ") + parts.settings.text(setting::siteAddress));
}

// What a customer needs to ask the tax authority about the receipt.
QString checkText(const Parts& parts, const Document& document, const FiscalRecord& record)
{
    return QStringLiteral("t=%1&s=%2&fn=%3&i=%4&fp=%5&n=%6")
        .arg(record.dateTime.toString(QStringLiteral("yyyyMMddTHHmm")), moneyText(document.total()),
            parts.drive.number())
        .arg(record.number)
        .arg(record.sign)
        .arg(document.type == DocumentType::Sale ? 1 : 2);
}

QString markOf(const Parts& parts, const Item& item)
{
    constexpr int allGood = 15;
    const bool good = parts.state.marking.results.value(item.markingCode) == allGood;
    return good ? QStringLiteral("[М+]") : QStringLiteral("[М]");
}

} // namespace

QList<tape::Line> position(const Parts& parts, const Item& item)
{
    PageWriter page(parts);
    page.text(item.name);
    if (!item.markingCode.isEmpty())
        page.text(markOf(parts, item));
    page.sum(QStringLiteral("  %1 x %2").arg(quantityText(item.quantity), moneyText(item.price)), item.sum());
    page.text(QStringLiteral("  ") + names::taxRate(parts.parameters, item.tax));
    if (parts.settings.isOn(setting::paymentObjects))
        page.text(QStringLiteral("  ПРИЗНАК ПРЕДМЕТА РАСЧЕТА: %1").arg(item.paymentObject));
    return page.lines();
}

tape::Page receipt(const Parts& parts, const Document& document, const FiscalRecord& record)
{
    PageWriter page(parts);
    pageblocks::addHeader(page, parts);
    page.centred(QStringLiteral("КАССОВЫЙ ЧЕК"));
    page.centred(
        document.type == DocumentType::Sale ? QStringLiteral("ПРИХОД") : QStringLiteral("ВОЗВРАТ ПРИХОДА"));
    page.append(document.body).rule();
    addSettlement(page, parts, document);
    page.append(document.footer).rule();
    page.text(QStringLiteral("ЧЕК: %1").arg(parts.state.shift.receipts));
    pageblocks::addFiscalData(page, parts, record, document.cashier);
    page.text(QStringLiteral("САЙТ ФНС: ") + parts.state.registration.taxSite);
    addOperator(page, parts);
    page.add(tape::Code{tape::Symbology::Qr, checkText(parts, document, record)});
    pageblocks::addTail(page, parts);
    return page.append(document.tail).end();
}

} // namespace emulator::pages
