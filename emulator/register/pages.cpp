#include "register/pages.h"

#include "register/names.h"
#include "register/pageblocks.h"
#include "register/pagewriter.h"
#include "register/parts.h"

namespace emulator::pages {

tape::Page money(const Parts& parts, const Document& document)
{
    const bool incoming = document.type == DocumentType::CashIn;
    PageWriter page(parts);
    pageblocks::addHeader(page, parts);
    page.centred(incoming ? QStringLiteral("ВНЕСЕНИЕ") : QStringLiteral("ИЗЪЯТИЕ"));
    page.append(document.body);
    page.sum(QStringLiteral("НАЛИЧНЫМИ"), document.money);
    page.sum(QStringLiteral("В ДЕНЕЖНОМ ЯЩИКЕ"), parts.state.drawer.cash);
    page.append(document.footer);
    pageblocks::addShift(page, parts);
    return page.text(QStringLiteral("КАССИР: ") + document.cashier.name).end();
}

tape::Page text(const Parts& parts, const Document& document)
{
    PageWriter page(parts);
    pageblocks::addHeader(page, parts);
    page.append(document.body).append(document.footer);
    return page.centred(QStringLiteral("НЕФИСКАЛЬНЫЙ ДОКУМЕНТ")).end();
}

tape::Page cancelled(const Parts& parts, const Document& document)
{
    PageWriter page(parts);
    page.append(document.body).append(document.footer);
    return page.centred(QStringLiteral("ДОКУМЕНТ АННУЛИРОВАН")).end();
}

tape::Page totals(const Parts& parts, const Cashier& cashier)
{
    PageWriter page(parts);
    pageblocks::addHeader(page, parts);
    page.centred(QStringLiteral("ТЕКУЩИЕ ИТОГИ СМЕНЫ (X-ОТЧЕТ)"));
    pageblocks::addTotals(page, parts);
    pageblocks::addShift(page, parts);
    return page.text(QStringLiteral("КАССИР: ") + cashier.name).end();
}

tape::Page report(
    const Parts& parts, const QString& title, const FiscalRecord& record, const Cashier& cashier)
{
    PageWriter page(parts);
    pageblocks::addHeader(page, parts);
    page.centred(title);
    if (record.type == FiscalType::ShiftClosing)
        pageblocks::addTotals(page, parts);
    if (record.type == FiscalType::Registration || record.type == FiscalType::RegistrationChange)
        page.text(QStringLiteral("СНО: ") + names::taxSystems(parts.state.registration.taxSystems));
    page.pair(QStringLiteral("НЕ ПЕРЕДАНО ДОКУМЕНТОВ В ОФД"), QString::number(parts.drive.queueLength()));
    page.rule();
    pageblocks::addFiscalData(page, parts, record, cashier);
    return page.end();
}

tape::Page copy(const Parts& parts, const FiscalRecord& record)
{
    const QString title = QStringLiteral("КОПИЯ ДОКУМЕНТА ИЗ ФН");
    const tape::Page kept = parts.drive.print(record.number);
    // It looks as it did, whatever the width is by now.
    if (!kept.lines.isEmpty())
        return {kept.width, PageWriter(parts, kept.width).centred(title).append(kept.lines).lines()};
    PageWriter page(parts);
    page.centred(title);
    page.pair(QStringLiteral("ФД: %1").arg(record.number), QStringLiteral("ФПД: ") + record.sign);
    return page.text(record.dateTime.toString(QStringLiteral("dd.MM.yy HH:mm"))).end();
}

} // namespace emulator::pages
