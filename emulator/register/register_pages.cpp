#include "register/register.h"

#include "register/page.h"
#include "register/parametertable.h"

#include <QMap>
#include <QtEndian>

#include <algorithm>

namespace emulator {

namespace {

struct TaxRate
{
    int code;
    int percent;
};

// Rates whose tax is contained in the price, with the percentage it is counted by.
constexpr TaxRate taxRates[] = {{1, 20}, {2, 10}, {3, 20}, {4, 10}, {7, 5}, {8, 7}, {9, 5}, {10, 7}};

Money containedTax(Money sum, int percent)
{
    const qint64 whole = 100 + percent;
    return (sum * percent * 2 + whole) / (whole * 2);
}

// As the head of a Windows bitmap tells it; a negative height means rows from the top.
QString pictureSize(const QByteArray& bitmap)
{
    const auto width = qFromLittleEndian<qint32>(bitmap.constData() + 18);
    const auto height = qFromLittleEndian<qint32>(bitmap.constData() + 22);
    return QStringLiteral("%1 x %2").arg(width).arg(qAbs(height));
}

QString equals(Money sum)
{
    return QLatin1Char('=') + moneyText(sum);
}

void addTurnover(Page& page, const QString& title, const Turnover& turnover)
{
    page.pair(QStringLiteral("%1: %2").arg(title).arg(turnover.count), equals(turnover.sum));
}

void addTaxes(Page& page, const Document& receipt, const Register& device)
{
    QMap<int, Money> sums;
    for (const Item& item : receipt.items)
        sums[item.tax] += item.sum();
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum) {
        const auto* const rate = std::find_if(std::begin(taxRates), std::end(taxRates),
            [&sum](const TaxRate& candidate) { return candidate.code == sum.key(); });
        const Money tax = rate == std::end(taxRates) ? sum.value() : containedTax(sum.value(), rate->percent);
        page.pair(QStringLiteral("СУММА ") + device.taxName(sum.key()), equals(tax));
    }
}

} // namespace

void Register::addHeader(Page& page) const
{
    if (hasLogo() && m_parameters.isOn(parameter::companyLogo))
        page.frame(QStringLiteral("ЛОГОТИП"), pictureSize(m_logo));
    for (const QString& line : m_parameters.rows(parameter::headerLines)) {
        if (!line.isEmpty())
            page.centred(line.trimmed());
    }
}

void Register::addFiscalBlock(Page& page, const FiscalRecord& record, const Cashier& cashier) const
{
    page.text(QStringLiteral("КАССИР: ") + cashier.name);
    if (!cashier.inn.isEmpty())
        page.text(QStringLiteral("ИНН КАССИРА: ") + cashier.inn);
    page.text(QStringLiteral("МЕСТО РАСЧЕТОВ: ") + m_registration.place);
    page.pair(
        QStringLiteral("ИНН: ") + m_registration.userInn, QStringLiteral("РН ККТ: ") + m_registration.number);
    page.text(QStringLiteral("ЗН ККТ: ") + m_identity.serialNumber);
    page.pair(QStringLiteral("СМЕНА: %1").arg(m_shiftNumber),
        record.dateTime.toString(QStringLiteral("dd.MM.yy HH:mm")));
    page.pair(QStringLiteral("ФН: ") + m_drive.number(), QStringLiteral("ФД: %1").arg(record.number));
    page.text(QStringLiteral("ФПД: ") + record.sign);
}

QStringList Register::receiptPage(const Document& receipt, const FiscalRecord& record) const
{
    Page page(m_identity.width);
    addHeader(page);
    const bool sale = receipt.type == DocumentType::Sale;
    page.centred(QStringLiteral("КАССОВЫЙ ЧЕК"));
    page.centred(sale ? QStringLiteral("ПРИХОД") : QStringLiteral("ВОЗВРАТ ПРИХОДА"));
    page.append(receipt.body).rule();
    page.pair(QStringLiteral("ИТОГ"), equals(receipt.total()));
    for (int kind = 0; kind < paymentKinds; ++kind) {
        if (const Money sum = receipt.payments[static_cast<size_t>(kind)]; sum != 0)
            page.pair(paymentName(kind), equals(sum));
    }
    if (receipt.change() > 0)
        page.pair(QStringLiteral("СДАЧА"), equals(receipt.change()));
    addTaxes(page, receipt, *this);
    page.text(QStringLiteral("СНО: ") + taxSystemName(receipt.taxSystem));
    if (!receipt.customer.isEmpty())
        page.text(QStringLiteral("ЭЛ. АДРЕС ПОКУПАТЕЛЯ: ") + receipt.customer);
    page.append(receipt.footer).rule();
    page.text(QStringLiteral("ЧЕК: %1").arg(m_receiptNumber));
    addFiscalBlock(page, record, receipt.cashier);
    page.text(QStringLiteral("САЙТ ФНС: ") + m_registration.taxSite);
    page.frame(QStringLiteral("QR"),
        QStringLiteral("t=%1&s=%2&fn=%3&i=%4&fp=%5&n=%6")
            .arg(record.dateTime.toString(QStringLiteral("yyyyMMddTHHmm")), moneyText(receipt.total()),
                m_drive.number())
            .arg(record.number)
            .arg(record.sign)
            .arg(sale ? 1 : 2));
    for (const QString& line : m_parameters.rows(parameter::tailLines)) {
        if (!line.isEmpty())
            page.centred(line.trimmed());
    }
    for (const QString& line : receipt.tail)
        page.text(line);
    return page.cut().lines();
}

QStringList Register::moneyPage(const Document& money) const
{
    const bool incoming = money.type == DocumentType::CashIn;
    Page page(m_identity.width);
    addHeader(page);
    page.centred(incoming ? QStringLiteral("ВНЕСЕНИЕ") : QStringLiteral("ИЗЪЯТИЕ"));
    page.append(money.body);
    page.pair(QStringLiteral("НАЛИЧНЫМИ"), equals(money.money));
    page.pair(QStringLiteral("В ДЕНЕЖНОМ ЯЩИКЕ"), equals(m_cash));
    page.append(money.footer);
    page.pair(
        QStringLiteral("СМЕНА: %1").arg(m_shiftNumber), now().toString(QStringLiteral("dd.MM.yy HH:mm")));
    return page.text(QStringLiteral("КАССИР: ") + money.cashier.name).cut().lines();
}

QStringList Register::textPage(const Document& document) const
{
    Page page(m_identity.width);
    addHeader(page);
    page.append(document.body).append(document.footer);
    page.centred(QStringLiteral("НЕФИСКАЛЬНЫЙ ДОКУМЕНТ"));
    return page.cut().lines();
}

void Register::addTotals(Page& page) const
{
    addTurnover(page, QStringLiteral("ПРИХОД"), m_counters.sales);
    for (int kind = 0; kind < paymentKinds; ++kind)
        page.pair(QStringLiteral("  ") + paymentName(kind),
            equals(m_counters.sales.payments[static_cast<size_t>(kind)]));
    addTurnover(page, QStringLiteral("ВОЗВРАТ ПРИХОДА"), m_counters.returns);
    for (int kind = 0; kind < paymentKinds; ++kind) {
        page.pair(QStringLiteral("  ") + paymentName(kind),
            equals(m_counters.returns.payments[static_cast<size_t>(kind)]));
    }
    addTurnover(page, QStringLiteral("ВНЕСЕНИЕ"), m_counters.cashIn);
    addTurnover(page, QStringLiteral("ИЗЪЯТИЕ"), m_counters.cashOut);
    page.pair(QStringLiteral("АННУЛИРОВАНО ДОКУМЕНТОВ"), QString::number(m_counters.cancelled));
    page.pair(QStringLiteral("НАЛИЧНЫХ В ДЕНЕЖНОМ ЯЩИКЕ"), equals(m_cash));
}

QStringList Register::reportPage(
    const QString& title, const FiscalRecord& record, const Cashier& cashier) const
{
    Page page(m_identity.width);
    addHeader(page);
    page.centred(title);
    if (record.type == FiscalType::ShiftClosing)
        addTotals(page);
    if (record.type == FiscalType::RegistrationChange)
        page.text(QStringLiteral("СНО: ") + taxSystemName(m_registration.taxSystems));
    page.pair(QStringLiteral("НЕ ПЕРЕДАНО ДОКУМЕНТОВ В ОФД"), QString::number(m_drive.queueLength()));
    page.rule();
    addFiscalBlock(page, record, cashier);
    return page.cut().lines();
}

} // namespace emulator
