#include "xml/receipt.h"

#include "register/hexdigits.h"
#include "register/judgement.h"
#include "register/tags.h"

#include <algorithm>
#include <numeric>

namespace emulator {

namespace {

constexpr int unchangedStatus = 255;
// Far beyond a receipt, and far from where sums overflow.
constexpr Money greatestSum = 1'000'000'000'000;

bool isHex(const QString& text)
{
    return !text.isEmpty() && bytesOfHexDigits(text.toLatin1());
}

// The code of the goods has one child, named after the kind of code that was recognised. A strict register
// has looked closer at it, and at 2110, before.
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

XmlVerdict badPosition(const char* words)
{
    return XmlVerdict::badValue(QStringLiteral("pa 1059: %1").arg(QLatin1String(words)));
}

XmlVerdict readMarking(const XmlNode& position, DocumentType type, Item& item)
{
    const XmlNode* const goods = position.child(tag::goodsCode);
    const bool marked = position.child(tag::markingMode) != nullptr;
    if (marked != (goods != nullptr) || marked != (position.child(tag::assignedStatus) != nullptr))
        return badPosition("2102, 1163 and 2110 come together");
    const QString code = position.textOf(tag::markingCode);
    if (!marked)
        return code.isEmpty() ? XmlVerdict() : badPosition("2000 without 2102");
    if (!isGoodsCode(*goods))
        return badPosition("1163 is no code in hexadecimal");
    if (position.numberOf(tag::markingMode) != 0)
        return badPosition("2102 is 0");
    const qint64 status = position.numberOf(tag::assignedStatus);
    // Goods that are sold whole or by measure, or come back so.
    const qint64 whole = type == DocumentType::Sale ? 1 : 3;
    if (status != whole && status != whole + 1 && status != unchangedStatus)
        return badPosition("2110 does not fit the receipt");
    if (position.child(tag::markingCode) != nullptr && !isHex(code))
        return badPosition("2000 is not hexadecimal");
    item.markingCode = QByteArray::fromHex(code.toLatin1());
    const XmlNode& kind = goods->children.constFirst();
    item.goodsCode[kind.name] = kind.value.toLower();
    item.assignedStatus = static_cast<int>(status);
    return {};
}

// A number that came as a text; a text that is none stays one.
QJsonValue asNumber(const QString& text)
{
    bool ok = false;
    const int number = text.toInt(&ok);
    return ok && QString::number(number) == text ? QJsonValue(number) : QJsonValue(text);
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
    if (const QString inn = position.textOf(tag::supplierInn); !inn.isEmpty())
        agent[tag::supplierInn] = inn;
    if (const QString kinds = position.textOf(tag::agentKinds); !kinds.isEmpty())
        agent[tag::agentKinds] = asNumber(kinds);
    return agent;
}

Money discountOf(const XmlNode& position)
{
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    const QList<XmlNode> records = discounts == nullptr ? QList<XmlNode>() : discounts->children;
    return std::accumulate(records.cbegin(), records.cend(), Money{0},
        [](Money sum, const XmlNode& record) { return sum + record.moneyOf(QStringLiteral("Value")); });
}

// The price with discount comes in whole kopecks, while the discount is meant for the position as a whole; a
// position's sum is what the latter gives, as long as the two agree but for the rounding.
XmlVerdict readSum(const XmlNode& position, Item& item)
{
    item.quantity = position.quantityOf(tag::quantity);
    item.price = position.moneyOf(QStringLiteral("PriceWithDiscount"));
    item.fullPrice = position.moneyOf(tag::price);
    item.discount = discountOf(position);
    const Money whole = positionSum(item.fullPrice, item.quantity) + item.discount;
    const Money rounding = qAbs(item.quantity) / 2000 + 1;
    const Money difference = whole - positionSum(item.price, item.quantity);
    if (whole < 0 || whole > greatestSum || qAbs(difference) > rounding)
        return badPosition("PriceWithDiscount is not 1079 less the discount");
    item.rounding = position.child(QStringLiteral("ItemDiscounts")) == nullptr ? 0 : difference;
    return {};
}

XmlVerdict readPrint(const XmlNode& tree, const QString& name, bool strict, QList<PrintPiece>& pieces)
{
    const XmlNode* const node = tree.child(name);
    if (node == nullptr)
        return {};
    const std::optional<QList<PrintPiece>> read = readPrintText(node->value, strict);
    pieces = read.value_or(QList<PrintPiece>());
    return read ? XmlVerdict() : XmlVerdict::badValue(QStringLiteral("%1: no such print sequence").arg(name));
}

} // namespace

XmlVerdict XmlReceipt::read(const XmlNode& tree, bool strict)
{
    m_strict = strict;
    XmlVerdict verdict = readHead(tree);
    for (const XmlNode& position : tree.child(tag::positions)->children) {
        if (!verdict.isGood())
            return verdict;
        verdict = readItem(position);
    }
    if (!verdict.isGood())
        return verdict;
    return items.isEmpty() ? XmlVerdict::badDocument(QStringLiteral("pa 1059: no position"))
                           : settlePayments(tree);
}

XmlVerdict XmlReceipt::readHead(const XmlNode& tree)
{
    const qint64 kind = tree.numberOf(tag::settlement);
    const qint64 unprinted = tree.numberOf(QStringLiteral("DoNotPrint"));
    if (kind != 1 && kind != 2)
        return XmlVerdict::badValue(QStringLiteral("1054 is 1 or 2"));
    if (unprinted != 0 && unprinted != 1)
        return XmlVerdict::badValue(QStringLiteral("DoNotPrint is 0 or 1"));
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
    return readTexts(tree);
}

XmlVerdict XmlReceipt::readTexts(const XmlNode& tree)
{
    const std::pair<const char*, QList<PrintPiece>&> texts[]{
        {"HeaderText", above}, {"Footer", below}, {"TextAfterDoc", tail}};
    XmlVerdict verdict;
    for (const auto& [name, pieces] : texts) {
        if (verdict.isGood())
            verdict = readPrint(tree, QLatin1String(name), m_strict, pieces);
    }
    // Hosts of other rules send an empty tail when they have none.
    if (tree.textOf(QStringLiteral("TextAfterDoc")).isEmpty())
        tail.clear();
    return verdict;
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
    if (verdict.isGood()) {
        constexpr qint64 thousandths = 1000;
        m_exactTotal += item.fullPrice * item.quantity + item.discount * thousandths;
        verdict = readMarking(position, head.type, item);
    }
    if (verdict.isGood() && item.tax == 0)
        verdict = badPosition("1199 is 0");
    if (const char* const misfit = judgement::misfit(item); verdict.isGood() && misfit != nullptr)
        verdict = badPosition(misfit);
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
            return XmlVerdict::badPayments(QStringLiteral("%1 is below 0").arg(tags[kind]));
    }
    const Money total = sumOf(items);
    const Money paid = sumOf(payments);
    if (!isPaid(paid))
        return XmlVerdict::badPayments(
            QStringLiteral("pa 3: %1 paid, the positions make %2").arg(moneyText(paid), moneyText(total)));
    // The fiscal drive adds rounded positions.
    Money& cash = payments[0];
    const bool fromCash = cash != 0 && cash + total >= paid;
    (fromCash ? cash : *std::max_element(payments.begin(), payments.end())) += total - paid;
    return {};
}

// Hosts add their positions before they round, and half a kopeck may go either way in their fractions of a
// rouble; or they add what the positions make on paper. A lenient register takes anything between from cash.
bool XmlReceipt::isPaid(Money paid) const
{
    constexpr qint64 thousandths = 1000;
    const Money difference = qAbs(sumOf(items) - paid);
    if (difference == 0)
        return true;
    return m_strict ? qAbs(paid * thousandths - m_exactTotal) <= thousandths / 2
                    : difference * 2 <= items.size() && payments[0] != 0;
}

} // namespace emulator
