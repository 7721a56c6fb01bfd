#include "register/pageblocks.h"

#include "register/bitmappicture.h"
#include "register/names.h"
#include "register/pagewriter.h"
#include "register/parametertable.h"
#include "register/parts.h"
#include "register/settingtable.h"

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

void addLines(PageWriter& page, const QStringList& lines)
{
    for (const QString& line : lines) {
        if (!line.isEmpty())
            page.centred(line.trimmed());
    }
}

/// The counters of a report; some registers are set to leave out those that are zero.
class CounterLines
{
public:
    CounterLines(PageWriter& page, const Parts& parts)
        : m_page(page)
        , m_parts(parts)
        , m_withZeros(parts.settings.isOn(setting::zeroCounters))
    {
    }

    void turnover(const QString& title, const Turnover& turnover)
    {
        if (m_withZeros || turnover.count != 0)
            m_page.sum(QStringLiteral("%1: %2").arg(title).arg(turnover.count), turnover.sum);
    }
    void sum(const QString& title, Money sum)
    {
        if (m_withZeros || sum != 0)
            m_page.sum(title, sum);
    }
    void count(const QString& title, int count)
    {
        if (m_withZeros || count != 0)
            m_page.pair(title, QString::number(count));
    }
    void receipts(const ShiftCounters& counters)
    {
        turnover(QStringLiteral("ПРИХОД"), counters.sales);
        payments(counters.sales.payments);
        turnover(QStringLiteral("ВОЗВРАТ ПРИХОДА"), counters.returns);
        payments(counters.returns.payments);
    }

private:
    void payments(const Payments& payments)
    {
        for (size_t kind = 0; kind < paymentKinds; ++kind)
            sum(QStringLiteral("  ") + names::paymentKind(m_parts.parameters, kind), payments[kind]);
    }

    PageWriter& m_page;
    const Parts& m_parts;
    const bool m_withZeros;
};

} // namespace

void addHeader(PageWriter& page, const Parts& parts)
{
    page.centred(QStringLiteral("ЭМУЛЯТОР, НЕ ЧЕК"));
    const auto logo = pictureOf(parts.state.logo, QStringLiteral("ЛОГОТИП"));
    if (logo && parts.parameters.isOn(parameter::companyLogo))
        page.add(*logo);
    addLines(page, parts.parameters.rows(parameter::headerLines));
    if (parts.settings.isOn(setting::userInHeader))
        addLines(page, {parts.state.registration.userName, parts.state.registration.address});
}

void addTail(PageWriter& page, const Parts& parts)
{
    addLines(page, parts.parameters.rows(parameter::tailLines));
}

void addShift(PageWriter& page, const Parts& parts)
{
    page.pair(shiftText(parts.state.shift), timeText(parts.clock.now()));
}

void addFiscalData(PageWriter& page, const Parts& parts, const FiscalRecord& record, const Cashier& cashier)
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

void addTotals(PageWriter& page, const Parts& parts)
{
    const ShiftCounters& counters = parts.state.shift.counters;
    const bool withDrawer = parts.settings.isOn(setting::drawerSection);
    CounterLines lines(page, parts);
    lines.receipts(counters);
    if (withDrawer) {
        lines.turnover(QStringLiteral("ВНЕСЕНИЕ"), counters.cashIn);
        lines.turnover(QStringLiteral("ИЗЪЯТИЕ"), counters.cashOut);
    }
    lines.count(QStringLiteral("АННУЛИРОВАНО ДОКУМЕНТОВ"), counters.cancelled);
    if (withDrawer)
        lines.sum(QStringLiteral("НАЛИЧНЫХ В ДЕНЕЖНОМ ЯЩИКЕ"), parts.state.drawer.cash);
    if (!parts.settings.isOn(setting::printedGrandTotals))
        return;
    page.rule().text(QStringLiteral("НАКОПИТЕЛЬНЫЕ ИТОГИ"));
    lines.receipts(parts.state.shift.grandTotals);
}

} // namespace emulator::pageblocks
