#include "register/pages.h"

#include "register/names.h"
#include "register/page.h"
#include "register/pageblocks.h"
#include "register/parts.h"

namespace emulator::pages {

QStringList money(const Parts& parts, const Document& document)
{
    const bool incoming = document.type == DocumentType::CashIn;
    Page page(parts.identity.width);
    pageblocks::addHeader(page, parts);
    page.centred(incoming ? QStringLiteral("ВНЕСЕНИЕ") : QStringLiteral("ИЗЪЯТИЕ"));
    page.append(document.body);
    page.sum(QStringLiteral("НАЛИЧНЫМИ"), document.money);
    page.sum(QStringLiteral("В ДЕНЕЖНОМ ЯЩИКЕ"), parts.state.drawer.cash);
    page.append(document.footer);
    pageblocks::addShift(page, parts);
    return page.text(QStringLiteral("КАССИР: ") + document.cashier.name).cut().lines();
}

QStringList text(const Parts& parts, const Document& document)
{
    Page page(parts.identity.width);
    pageblocks::addHeader(page, parts);
    page.append(document.body).append(document.footer);
    return page.centred(QStringLiteral("НЕФИСКАЛЬНЫЙ ДОКУМЕНТ")).cut().lines();
}

QStringList cancelled(const Parts& parts, const Document& document)
{
    Page page(parts.identity.width);
    page.append(document.body).append(document.footer);
    return page.centred(QStringLiteral("ДОКУМЕНТ АННУЛИРОВАН")).cut().lines();
}

QStringList totals(const Parts& parts, const Cashier& cashier)
{
    Page page(parts.identity.width);
    pageblocks::addHeader(page, parts);
    page.centred(QStringLiteral("ТЕКУЩИЕ ИТОГИ СМЕНЫ (X-ОТЧЕТ)"));
    pageblocks::addTotals(page, parts);
    pageblocks::addShift(page, parts);
    return page.text(QStringLiteral("КАССИР: ") + cashier.name).cut().lines();
}

QStringList report(
    const Parts& parts, const QString& title, const FiscalRecord& record, const Cashier& cashier)
{
    Page page(parts.identity.width);
    pageblocks::addHeader(page, parts);
    page.centred(title);
    if (record.type == FiscalType::ShiftClosing)
        pageblocks::addTotals(page, parts);
    if (record.type == FiscalType::RegistrationChange)
        page.text(QStringLiteral("СНО: ") + names::taxSystems(parts.state.registration.taxSystems));
    page.pair(QStringLiteral("НЕ ПЕРЕДАНО ДОКУМЕНТОВ В ОФД"), QString::number(parts.drive.queueLength()));
    page.rule();
    pageblocks::addFiscalData(page, parts, record, cashier);
    return page.cut().lines();
}

QStringList copy(const Parts& parts, const FiscalRecord& record)
{
    Page page(parts.identity.width);
    page.centred(QStringLiteral("КОПИЯ ДОКУМЕНТА ИЗ ФН"));
    const QStringList lines = parts.drive.print(record.number);
    if (!lines.isEmpty())
        return page.append(lines).lines();
    page.pair(QStringLiteral("ФД: %1").arg(record.number), QStringLiteral("ФПД: ") + record.sign);
    return page.text(record.dateTime.toString(QStringLiteral("dd.MM.yy HH:mm"))).cut().lines();
}

} // namespace emulator::pages
