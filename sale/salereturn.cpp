#include "salereturn.h"

#include "documentkind.h"
#include "documentstore.h"
#include "returncompletion.h"
#include "returnrefused.h"
#include "saletr.h"
#include "soldline.h"

#include "linesum.h"
#include "money.h"
#include "receipt.h"
#include "receiptparser.h"

#include <algorithm>

namespace sale {

namespace {

using receipt::Finding;
using receipt::Receipt;
using receipt::ReceiptItem;

/// The returns of a sale that are issued or may be, run or wait, and how often each counts.
struct FormerReturn
{
    Receipt receipt;
    int times = 1;
};

QString quantityText(qint64 thousandths)
{
    return QString::number(static_cast<double>(thousandths) / 1000.0);
}

/// A return as it is held against its sale.
class Comparison
{
public:
    Comparison(
        const DocumentStore& store, const StoredDocument& sale, const Receipt& sold, const QString& exceptId)
        : m_sale(sale)
        , m_sold(sold)
    {
        for (const StoredDocument& former :
            store.find({.states = {DocumentState::Queued, DocumentState::Running, DocumentState::Issued,
                            DocumentState::Unknown},
            .returnOf = sale.request.id,
            .withAttempts = false})) {
            if (former.request.id != exceptId)
                add(former);
        }
    }

    QList<Finding> faults(const Receipt& back)
    {
        for (const ReceiptItem& item : back.items) {
            if (item.kind == ReceiptItem::Position)
                judge(item, back);
        }
        const qint64 left = m_sold.total * m_sale.times - returned();
        if (m_faults.isEmpty() && back.total > left)
            fail({}, receipt::moneyText(back.total),
                tr("comes to more than is left of the sale, %1").arg(receipt::moneyText(left)));
        return m_faults;
    }

private:
    void add(const StoredDocument& former)
    {
        const std::optional<Receipt> receipt = keptReceipt(completedReturn(former.request.body, m_sale));
        if (receipt)
            m_formers.append({*receipt, std::max(1, former.times)});
        else
            fail(QStringLiteral("returnOf"), former.request.id,
                tr("is a return of the sale whose positions the journal does not keep any more"));
    }

    qint64 returned() const
    {
        qint64 sum = 0;
        for (const FormerReturn& former : m_formers)
            sum += former.receipt.total * former.times;
        return sum;
    }

    qint64 left(const SoldLine& line) const
    {
        qint64 quantity = quantityIn(m_sold, line) * m_sale.times;
        for (const FormerReturn& former : m_formers)
            quantity -= quantityIn(former.receipt, line) * former.times;
        return quantity;
    }

    void judge(const ReceiptItem& item, const Receipt& back)
    {
        const SoldLine line = soldLineOf(item);
        if (quantityIn(m_sold, line) == 0)
            return failPrice(item, line);
        const qint64 left = this->left(line);
        const qint64 wanted = quantityIn(back, line);
        if (wanted > left)
            fail(item.path + QStringLiteral(".quantity"), quantityText(wanted),
                tr("is more than is left of the sale at this price, %1").arg(quantityText(left)));
    }

    void failPrice(const ReceiptItem& item, const SoldLine& line)
    {
        QStringList prices;
        for (const ReceiptItem& sold : m_sold.items) {
            if (sold.kind == ReceiptItem::Position && soldLineOf(sold).isOfSameGoods(line))
                prices.append(receipt::moneyText(soldLineOf(sold).price));
        }
        if (prices.isEmpty())
            return fail(item.path, item.position.getName(), tr("was not sold with this sale"));
        prices.removeDuplicates();
        fail(item.path + QStringLiteral(".price"), receipt::moneyText(line.price),
            tr("is not the price at which it was issued, %1").arg(prices.join(QStringLiteral(", "))));
    }

    void fail(const QString& path, const QString& given, const QString& reason)
    {
        m_faults.append({Finding::Error, path, given, reason});
    }

    const StoredDocument& m_sale;
    const Receipt& m_sold;
    QList<FormerReturn> m_formers;
    QList<Finding> m_faults;
};

Finding saleFault(const QString& saleId, const QString& reason)
{
    return {Finding::Error, QStringLiteral("returnOf"), saleId, reason};
}

} // namespace

QByteArray completedBody(const DocumentStore& store, const DocumentRequest& request)
{
    const std::optional<StoredDocument> sale
        = request.returnOf.isEmpty() ? std::nullopt : store.findId(request.returnOf);
    return sale ? completedReturn(request.body, *sale) : request.body;
}

QList<Finding> returnFaults(
    const DocumentStore& store, const QString& saleId, const Receipt& back, const QString& exceptId)
{
    const std::optional<StoredDocument> sale = store.findId(saleId);
    if (!sale)
        return {saleFault(saleId, tr("is no document of this journal"))};
    if (sale->request.kind != documentKindName(DocumentKind::Sale))
        return {saleFault(saleId, tr("is not a sale"))};
    if (sale->state != DocumentState::Issued)
        return {saleFault(saleId, tr("is not known to be issued"))};
    const std::optional<Receipt> sold = keptReceipt(sale->request.body);
    if (!sold)
        return {saleFault(saleId, tr("is a sale whose positions the journal does not keep"))};
    return Comparison(store, *sale, *sold, exceptId).faults(back);
}

StoredDocument acceptReturn(
    DocumentStore& store, const DocumentRequest& request, const DocumentStore::Condition& condition)
{
    return store.accept(request, [&] {
        if (condition)
            condition();
        const Receipt back = receipt::receiptFromText(completedBody(store, request));
        const QList<Finding> faults = returnFaults(store, request.returnOf, back, request.id);
        if (!faults.isEmpty())
            throw ReturnRefused(faults);
    });
}

} // namespace sale
