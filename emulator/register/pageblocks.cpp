#include "register/pageblocks.h"

#include "register/bitmaphead.h"
#include "register/names.h"
#include "register/page.h"
#include "register/parametertable.h"
#include "register/parts.h"

namespace emulator::pageblocks {

namespace {

QString shiftText(const Shift& shift)
{
    return QStringLiteral("СМЕНА: %1").arg(shift.number);
}

QString timeText(const QDateTime& time)
{
    return time.toString(QStringLiteral("dd.MM.yy HH:mm"));
}

void addLines(Page& page, const QStringList& lines)
{
    for (const QString& line : lines) {
        if (!line.isEmpty())
            page.centred(line.trimmed());
    }
}

void addTurnover(Page& page, const QString& title, const Turnover& turnover)
{
    page.sum(QStringLiteral("%1: %2").arg(title).arg(turnover.count), turnover.sum);
}

void addPayments(Page& page, const Parts& parts, const Payments& payments)
{
    for (size_t kind = 0; kind < paymentKinds; ++kind)
        page.sum(QStringLiteral("  ") + names::paymentKind(parts.parameters, kind), payments[kind]);
}

} // namespace

void addHeader(Page& page, const Parts& parts)
{
    page.centred(QStringLiteral("ЭМУЛЯТОР, НЕ ЧЕК"));
    const auto logo = BitmapHead::read(parts.state.logo);
    if (logo && parts.parameters.isOn(parameter::companyLogo))
        page.frame(QStringLiteral("ЛОГОТИП"), QStringLiteral("%1 x %2").arg(logo->width).arg(logo->height));
    addLines(page, parts.parameters.rows(parameter::headerLines));
}

void addTail(Page& page, const Parts& parts)
{
    addLines(page, parts.parameters.rows(parameter::tailLines));
}

void addShift(Page& page, const Parts& parts)
{
    page.pair(shiftText(parts.state.shift), timeText(parts.clock.now()));
}

void addFiscalData(Page& page, const Parts& parts, const FiscalRecord& record, const Cashier& cashier)
{
    const Registration& registration = parts.state.registration;
    page.text(QStringLiteral("КАССИР: ") + cashier.name);
    if (!cashier.inn.isEmpty())
        page.text(QStringLiteral("ИНН КАССИРА: ") + cashier.inn);
    page.text(QStringLiteral("МЕСТО РАСЧЕТОВ: ") + registration.place);
    page.pair(
        QStringLiteral("ИНН: ") + registration.userInn, QStringLiteral("РН ККТ: ") + registration.number);
    page.text(QStringLiteral("ЗН ККТ: ") + parts.identity.serialNumber);
    page.pair(shiftText(parts.state.shift), timeText(record.dateTime));
    page.pair(QStringLiteral("ФН: ") + parts.drive.number(), QStringLiteral("ФД: %1").arg(record.number));
    page.text(QStringLiteral("ФПД: ") + record.sign);
}

void addTotals(Page& page, const Parts& parts)
{
    const ShiftCounters& counters = parts.state.shift.counters;
    addTurnover(page, QStringLiteral("ПРИХОД"), counters.sales);
    addPayments(page, parts, counters.sales.payments);
    addTurnover(page, QStringLiteral("ВОЗВРАТ ПРИХОДА"), counters.returns);
    addPayments(page, parts, counters.returns.payments);
    addTurnover(page, QStringLiteral("ВНЕСЕНИЕ"), counters.cashIn);
    addTurnover(page, QStringLiteral("ИЗЪЯТИЕ"), counters.cashOut);
    page.pair(QStringLiteral("АННУЛИРОВАНО ДОКУМЕНТОВ"), QString::number(counters.cancelled));
    page.sum(QStringLiteral("НАЛИЧНЫХ В ДЕНЕЖНОМ ЯЩИКЕ"), parts.state.drawer.cash);
}

} // namespace emulator::pageblocks
