#include "xml/receipt.h"

#include "register/tags.h"

#include <QRegularExpression>

#include <numeric>

namespace emulator {

namespace {

constexpr int unchangedStatus = 255;
// Far beyond a receipt, and far from where sums overflow.
constexpr Money greatestSum = 1'000'000'000'000;

bool isHex(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^([0-9A-Fa-f]{2})+$"));
    return form.match(text).hasMatch();
}

// The code of the goods has one child, named after the kind of code that was recognised.
bool isGoodsCode(const XmlNode& code)
{
    constexpr int lowestKind = 1300;
    constexpr int highestKind = 1399;
    if (code.children.size() != 1)
        return false;
    const XmlNode& value = code.children.constFirst();
    const int kind = value.name.toInt();
    return kind >= lowestKind && kind <= highestKind && isHex(value.value);
}

XmlVerdict readMarking(const XmlNode& position, DocumentType type, Item& item)
{
    const XmlNode* const goods = position.child(tag::goodsCode);
    const bool marked = position.child(tag::markingMode) != nullptr;
    if (marked != (goods != nullptr) || marked != (position.child(tag::assignedStatus) != nullptr))
        return XmlVerdict::badValue(
            QStringList{tag::markingMode, tag::goodsCode, tag::assignedStatus}.join(QStringLiteral(", ")));
    const QString code = position.textOf(tag::markingCode);
    if (!marked)
        return code.isEmpty() ? XmlVerdict() : XmlVerdict::badValue(tag::markingCode);
    if (!isGoodsCode(*goods))
        return XmlVerdict::badValue(tag::goodsCode);
    if (position.numberOf(tag::markingMode) != 0)
        return XmlVerdict::badValue(tag::markingMode);
    const qint64 status = position.numberOf(tag::assignedStatus);
    // Goods that are sold whole or by measure, or come back so.
    const bool sold = type == DocumentType::Sale && (status == 1 || status == 2);
    const bool returned = type == DocumentType::SaleReturn && (status == 3 || status == 4);
    if (!sold && !returned && status != unchangedStatus)
        return XmlVerdict::badValue(tag::assignedStatus);
    if (position.child(tag::markingCode) != nullptr && !isHex(code))
        return XmlVerdict::badValue(tag::markingCode);
    item.markingCode = QByteArray::fromHex(code.toLatin1());
    item.goodsCode = goods->toJson();
    item.assignedStatus = static_cast<int>(status);
    return {};
}

QJsonObject readAgent(const XmlNode& position)
{
    QJsonObject agent;
    for (const QString& name : {tag::agent, tag::supplier}) {
        const XmlNode* const block = position.child(name);
        const QJsonObject values = block == nullptr ? QJsonObject() : block->toJson();
        for (auto value = values.begin(); value != values.end(); ++value)
            agent[value.key()] = value.value();
    }
    for (const QString& name : {tag::agentKinds, tag::supplierInn}) {
        if (const QString value = position.textOf(name); !value.isEmpty())
            agent[name] = value;
    }
    return agent;
}

// The price with discount comes in whole kopecks, while the discount is meant for the position as a whole; a
// position's sum is what the latter gives, as long as the two agree but for the rounding.
XmlVerdict readSum(const XmlNode& position, Item& item)
{
    item.quantity = position.quantityOf(tag::quantity);
    item.price = position.moneyOf(QStringLiteral("PriceWithDiscount"));
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    const QList<XmlNode> records = discounts == nullptr ? QList<XmlNode>() : discounts->children;
    const Money discount = std::accumulate(records.cbegin(), records.cend(), Money{0},
        [](Money sum, const XmlNode& record) { return sum + record.moneyOf(QStringLiteral("Value")); });
    const Money whole = positionSum(position.moneyOf(tag::price), item.quantity) + discount;
    const Money rounding = qAbs(item.quantity) / 2000 + 1;
    const Money difference = whole - positionSum(item.price, item.quantity);
    if (whole < 0 || whole > greatestSum || qAbs(difference) > rounding)
        return XmlVerdict::badValue(QStringLiteral("PriceWithDiscount"));
    item.rounding = discounts == nullptr ? 0 : difference;
    item.fullPrice = position.moneyOf(tag::price);
    item.discount = discount;
    return {};
}

XmlVerdict readPrint(const XmlNode& tree, const QString& name, QList<PrintPiece>& pieces)
{
    const XmlNode* const node = tree.child(name);
    if (node == nullptr)
        return {};
    const std::optional<QList<PrintPiece>> read = readPrintText(node->value);
    pieces = read.value_or(QList<PrintPiece>());
    return read ? XmlVerdict() : XmlVerdict::badValue(name);
}

} // namespace

XmlVerdict XmlReceipt::read(const XmlNode& tree)
{
    XmlVerdict verdict = readHead(tree);
    for (const XmlNode& position : tree.child(tag::positions)->children) {
        if (!verdict.isGood())
            return verdict;
        verdict = readItem(position);
    }
    if (!verdict.isGood())
        return verdict;
    return items.isEmpty() ? XmlVerdict::badDocument(tag::positions) : settlePayments(tree);
}

XmlVerdict XmlReceipt::readHead(const XmlNode& tree)
{
    const qint64 kind = tree.numberOf(tag::settlement);
    const qint64 unprinted = tree.numberOf(QStringLiteral("DoNotPrint"));
    if (kind != 1 && kind != 2)
        return XmlVerdict::badValue(tag::settlement);
    if (unprinted != 0 && unprinted != 1)
        return XmlVerdict::badValue(QStringLiteral("DoNotPrint"));
    head.type = kind == 1 ? DocumentType::Sale : DocumentType::SaleReturn;
    head.unprinted = unprinted == 1;
    head.cashier = {tree.textOf(tag::cashier), tree.textOf(tag::cashierInn)};
    head.taxSystem = static_cast<int>(tree.numberOf(tag::taxSystem));
    head.customer = tree.textOf(tag::customerAddress);
    for (const QString& name : {tag::supplierPhone, tag::place, tag::additional}) {
        if (const QString value = tree.textOf(name); !value.isEmpty())
            head.requisites[name] = value;
    }
    if (const XmlNode* const customer = tree.child(tag::customer))
        head.requisites[tag::customer] = customer->toJson();
    if (const QString tail = tree.textOf(QStringLiteral("TextAfterDoc")); !tail.isEmpty())
        head.tail = tail.split(QLatin1Char('\n'));
    const XmlVerdict verdict = readPrint(tree, QStringLiteral("HeaderText"), above);
    return verdict.isGood() ? readPrint(tree, QStringLiteral("Footer"), below) : verdict;
}

XmlVerdict XmlReceipt::readItem(const XmlNode& position)
{
    Item item;
    item.name = position.textOf(tag::itemName);
    item.tax = static_cast<int>(position.numberOf(tag::taxRate));
    item.paymentObject = static_cast<int>(position.numberOf(tag::paymentObject));
    item.paymentMethod = static_cast<int>(position.numberOf(tag::paymentMethod));
    item.unit = static_cast<int>(position.numberOf(tag::unit));
    item.measure = position.textOf(tag::measureName);
    item.country = position.textOf(tag::country);
    item.declaration = position.textOf(tag::declaration);
    item.agent = readAgent(position);
    if (const XmlNode* const industry = position.child(tag::industry))
        item.industry = industry->toJson();
    XmlVerdict verdict = readSum(position, item);
    if (verdict.isGood())
        verdict = readMarking(position, head.type, item);
    if (verdict.isGood() && item.tax == 0)
        verdict = XmlVerdict::badValue(tag::taxRate);
    items.append(item);
    return verdict;
}

XmlVerdict XmlReceipt::settlePayments(const XmlNode& tree)
{
    static const QString tags[paymentKinds]
        = {tag::cash, tag::electronic, tag::prepayment, tag::credit, tag::otherPayment};
    for (size_t kind = 0; kind < payments.size(); ++kind) {
        payments[kind] = tree.moneyOf(tags[kind]);
        if (payments[kind] < 0)
            return XmlVerdict::badPayments(tags[kind]);
    }
    const Money total = sumOf(items);
    // Hosts add their positions before they round, so cash may be off by half a kopeck for each of them.
    const Money difference = total - sumOf(payments);
    if (difference != 0 && (qAbs(difference) * 2 > items.size() || payments[0] == 0))
        return XmlVerdict::badPayments(
            QStringLiteral("%1 != %2").arg(moneyText(sumOf(payments)), moneyText(total)));
    payments[0] += difference;
    return {};
}

} // namespace emulator
