// Rules about rates and payments.

#include "judgement.h"
#include "linesum.h"
#include "money.h"
#include "receiptnames.h"
#include "receipttr.h"
#include "requisitecodes.h"
#include "rulelist.h"

#include <QMap>

#include <algorithm>
#include <initializer_list>

namespace receipt::rules {

namespace {

struct OutdatedRate
{
    int code;
    const char* name;
    const char* successor;
};

// Until the end of 2025.
constexpr OutdatedRate outdatedRates[] = {{1, "vat20", "vat22"}, {3, "vat120", "vat122"}};
constexpr int firstYearOfSuccessors = 2026;

constexpr int mostPositions = 1000;

enum Kind { Prepaid = 2, OnCredit = 3 };

/// Kopecks by payment method of the positions and by kind of payment.
class Settlement
{
public:
    explicit Settlement(Judgement& judgement)
        : m_judgement(judgement)
    {
        for (const ReceiptItem& item : judgement.receipt.items) {
            if (item.kind == ReceiptItem::Position)
                m_sold[item.position.getPaymentMethod()] += lineSumOf(item.position).amount();
        }
        for (const FrPayment& payment : judgement.receipt.payments)
            m_paid[payment.kind] += kopecksOf(payment.sum);
    }

    /// Money of an advance, and of goods handed over before, comes in now.
    void judgeMoneyNow() const
    {
        const std::initializer_list<int> methods{FullPrepayment, Prepayment, Advance, CreditPayment};
        const qint64 money = m_judgement.receipt.total - m_paid[Prepaid] - m_paid[OnCredit];
        if (sold(methods) > money)
            warn(methods,
                tr("takes its money with this receipt: %1 for such positions, but without "
                   "prepaid and credit the payments come to %2")
                    .arg(moneyText(sold(methods)), moneyText(money)));
    }

    void judgeCredit() const
    {
        const qint64 credit = m_paid[OnCredit];
        const qint64 unpaid = sold({CreditGiven});
        const qint64 mostUnpaid = sold({CreditGiven, PartialPayment});
        if (credit < unpaid)
            warn({CreditGiven},
                tr("hands the goods over unpaid: payments of type credit must come to %1, not %2")
                    .arg(moneyText(unpaid), moneyText(credit)));
        if (credit > mostUnpaid)
            warnOfPayments(tr("is more than positions by credit and partialPayment leave unpaid, %1")
                               .arg(moneyText(mostUnpaid)));
        if (credit <= unpaid || credit >= mostUnpaid)
            warn({PartialPayment},
                tr("is paid in part now and in part by a payment of type credit, which must be "
                   "between %1 and %2, not %3")
                    .arg(moneyText(unpaid), moneyText(mostUnpaid), moneyText(credit)));
    }

    /// What an advance has paid for is paid by prepaid when it is handed over.
    void judgeAdvanceSettled() const
    {
        if (m_paid[Prepaid] > 0)
            return;
        for (const ReceiptItem& item : m_judgement.receipt.items) {
            if (item.kind == ReceiptItem::Position && item.position.getPaymentMethod() == FullPayment
                && item.position.getPaymentObject() == MoneyAlone)
                m_judgement.warning(item.path + QStringLiteral(".paymentMethod"),
                    names::nameOf(names::paymentMethods(), FullPayment),
                    tr("settles an advance (paymentObject payment) without a payment of type "
                       "prepaid; taking one is advance"));
        }
    }

private:
    qint64 sold(std::initializer_list<int> methods) const
    {
        qint64 sum = 0;
        for (const int method : methods)
            sum += m_sold[method];
        return sum;
    }

    void warn(std::initializer_list<int> methods, const QString& reason) const
    {
        for (const ReceiptItem& item : m_judgement.receipt.items) {
            const int method = item.position.getPaymentMethod();
            if (item.kind == ReceiptItem::Position
                && std::find(methods.begin(), methods.end(), method) != methods.end())
                m_judgement.warning(item.path + QStringLiteral(".paymentMethod"),
                    names::nameOf(names::paymentMethods(), method), reason);
        }
    }

    void warnOfPayments(const QString& reason) const
    {
        for (qsizetype index = 0; index < m_judgement.receipt.payments.size(); ++index) {
            if (m_judgement.receipt.payments.at(index).kind == OnCredit)
                return m_judgement.warning(
                    QStringLiteral("payments[%1].sum").arg(index), moneyText(m_paid[OnCredit]), reason);
        }
    }

    Judgement& m_judgement;
    QMap<int, qint64> m_sold;
    QMap<int, qint64> m_paid;
};

} // namespace

void positionCount(Judgement& judgement)
{
    // A split position counts twice, as the register sees it.
    const QList<ReceiptItem>& items = judgement.receipt.items;
    const auto count = std::count_if(items.cbegin(), items.cend(),
        [](const ReceiptItem& item) { return item.kind == ReceiptItem::Position; });
    if (count > mostPositions)
        judgement.warning(QStringLiteral("items"), {},
            tr("has %1 positions; a register takes %2 at most, and may refuse the next one (too many "
               "positions)")
                .arg(count)
                .arg(mostPositions));
}

void rates(Judgement& judgement)
{
    // The goods of an older sale come back with the rate with which they were sold.
    if (judgement.receipt.isReturn() || judgement.options.today.year() < firstYearOfSuccessors)
        return;
    for (const ReceiptItem& item : judgement.receipt.items) {
        for (const OutdatedRate& rate : outdatedRates) {
            if (item.kind == ReceiptItem::Position && item.position.getTaxCode() == rate.code)
                judgement.warning(item.path + QStringLiteral(".tax.type"), QLatin1String(rate.name),
                    tr("ended with 2025: a sale has %1 now, only the return of an older sale keeps it")
                        .arg(QLatin1String(rate.successor)));
        }
    }
}

void payments(Judgement& judgement)
{
    if (!judgement.isWhole)
        return;
    const Settlement settlement(judgement);
    settlement.judgeMoneyNow();
    settlement.judgeCredit();
    settlement.judgeAdvanceSettled();
}

} // namespace receipt::rules
