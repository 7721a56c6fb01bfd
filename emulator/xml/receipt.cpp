#include "xml/receipt.h"

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
    const XmlNode* const goods = position.child(QStringLiteral("1163"));
    const bool marked = position.child(QStringLiteral("2102")) != nullptr;
    if (marked != (goods != nullptr) || marked != (position.child(QStringLiteral("2110")) != nullptr))
        return XmlVerdict::badValue(QStringLiteral("2102, 1163, 2110"));
    const QString code = position.textOf(QStringLiteral("2000"));
    if (!marked)
        return code.isEmpty() ? XmlVerdict() : XmlVerdict::badValue(QStringLiteral("2000"));
    if (!isGoodsCode(*goods))
        return XmlVerdict::badValue(QStringLiteral("1163"));
    if (position.numberOf(QStringLiteral("2102")) != 0)
        return XmlVerdict::badValue(QStringLiteral("2102"));
    const qint64 status = position.numberOf(QStringLiteral("2110"));
    // Goods that are sold whole or by measure, or come back so.
    const bool sold = type == DocumentType::Sale && (status == 1 || status == 2);
    const bool returned = type == DocumentType::SaleReturn && (status == 3 || status == 4);
    if (!sold && !returned && status != unchangedStatus)
        return XmlVerdict::badValue(QStringLiteral("2110"));
    if (position.child(QStringLiteral("2000")) != nullptr && !isHex(code))
        return XmlVerdict::badValue(QStringLiteral("2000"));
    item.markingCode = QByteArray::fromHex(code.toLatin1());
    return {};
}

QJsonObject readAgent(const XmlNode& position)
{
    QJsonObject agent;
    for (const QString& tag : {QStringLiteral("1223"), QStringLiteral("1224")}) {
        const XmlNode* const block = position.child(tag);
        const QJsonObject values = block == nullptr ? QJsonObject() : block->toJson();
        for (auto value = values.begin(); value != values.end(); ++value)
            agent[value.key()] = value.value();
    }
    for (const QString& tag : {QStringLiteral("1222"), QStringLiteral("1226")}) {
        if (const QString value = position.textOf(tag); !value.isEmpty())
            agent[tag] = value;
    }
    return agent;
}

// The price with discount comes in whole kopecks, while the discount is meant for the position as a whole; a
// position's sum is what the latter gives, as long as the two agree but for the rounding.
XmlVerdict readSum(const XmlNode& position, Item& item)
{
    item.quantity = position.quantityOf(QStringLiteral("1023"));
    item.price = position.moneyOf(QStringLiteral("PriceWithDiscount"));
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    const QList<XmlNode> records = discounts == nullptr ? QList<XmlNode>() : discounts->children;
    const Money discount = std::accumulate(records.cbegin(), records.cend(), Money{0},
        [](Money sum, const XmlNode& record) { return sum + record.moneyOf(QStringLiteral("Value")); });
    const Money whole = positionSum(position.moneyOf(QStringLiteral("1079")), item.quantity) + discount;
    const Money rounding = qAbs(item.quantity) / 2000 + 1;
    const Money difference = whole - positionSum(item.price, item.quantity);
    if (whole < 0 || whole > greatestSum || qAbs(difference) > rounding)
        return XmlVerdict::badValue(QStringLiteral("PriceWithDiscount"));
    item.rounding = discounts == nullptr ? 0 : difference;
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
    for (const XmlNode& position : tree.child(QStringLiteral("1059"))->children) {
        if (!verdict.isGood())
            return verdict;
        verdict = readItem(position);
    }
    if (!verdict.isGood())
        return verdict;
    return items.isEmpty() ? XmlVerdict::badDocument(QStringLiteral("1059")) : settlePayments(tree);
}

XmlVerdict XmlReceipt::readHead(const XmlNode& tree)
{
    const qint64 kind = tree.numberOf(QStringLiteral("1054"));
    const qint64 unprinted = tree.numberOf(QStringLiteral("DoNotPrint"));
    if (kind != 1 && kind != 2)
        return XmlVerdict::badValue(QStringLiteral("1054"));
    if (unprinted != 0 && unprinted != 1)
        return XmlVerdict::badValue(QStringLiteral("DoNotPrint"));
    head.type = kind == 1 ? DocumentType::Sale : DocumentType::SaleReturn;
    head.unprinted = unprinted == 1;
    head.cashier = {tree.textOf(QStringLiteral("1021")), tree.textOf(QStringLiteral("1203"))};
    head.taxSystem = static_cast<int>(tree.numberOf(QStringLiteral("1055")));
    head.customer = tree.textOf(QStringLiteral("1008"));
    for (const char* const tag : {"1171", "1187", "1192"}) {
        if (const QString value = tree.textOf(QLatin1String(tag)); !value.isEmpty())
            head.requisites[QLatin1String(tag)] = value;
    }
    if (const XmlNode* const customer = tree.child(QStringLiteral("1256")))
        head.requisites[QStringLiteral("1256")] = customer->toJson();
    if (const QString tail = tree.textOf(QStringLiteral("TextAfterDoc")); !tail.isEmpty())
        head.tail = tail.split(QLatin1Char('\n'));
    const XmlVerdict verdict = readPrint(tree, QStringLiteral("HeaderText"), above);
    return verdict.isGood() ? readPrint(tree, QStringLiteral("Footer"), below) : verdict;
}

XmlVerdict XmlReceipt::readItem(const XmlNode& position)
{
    Item item;
    item.name = position.textOf(QStringLiteral("1030"));
    item.tax = static_cast<int>(position.numberOf(QStringLiteral("1199")));
    item.paymentObject = static_cast<int>(position.numberOf(QStringLiteral("1212")));
    item.paymentMethod = static_cast<int>(position.numberOf(QStringLiteral("1214")));
    item.unit = static_cast<int>(position.numberOf(QStringLiteral("2108")));
    item.country = position.textOf(QStringLiteral("1230"));
    item.declaration = position.textOf(QStringLiteral("1231"));
    item.agent = readAgent(position);
    if (const XmlNode* const industry = position.child(QStringLiteral("1260")))
        item.industry = industry->toJson();
    XmlVerdict verdict = readSum(position, item);
    if (verdict.isGood())
        verdict = readMarking(position, head.type, item);
    if (verdict.isGood() && item.tax == 0)
        verdict = XmlVerdict::badValue(QStringLiteral("1199"));
    items.append(item);
    return verdict;
}

XmlVerdict XmlReceipt::settlePayments(const XmlNode& tree)
{
    static const char* const tags[paymentKinds] = {"1031", "1081", "1215", "1216", "1217"};
    for (size_t kind = 0; kind < payments.size(); ++kind) {
        payments[kind] = tree.moneyOf(QLatin1String(tags[kind]));
        if (payments[kind] < 0)
            return XmlVerdict::badPayments(QLatin1String(tags[kind]));
    }
    const Money total = std::accumulate(
        items.cbegin(), items.cend(), Money{0}, [](Money sum, const Item& item) { return sum + item.sum(); });
    // Hosts add their positions before they round, so cash may be off by half a kopeck for each of them.
    const Money difference = total - sumOf(payments);
    if (difference != 0 && (qAbs(difference) * 2 > items.size() || payments[0] == 0))
        return XmlVerdict::badPayments(
            QStringLiteral("%1 != %2").arg(moneyText(sumOf(payments)), moneyText(total)));
    payments[0] += difference;
    return {};
}

} // namespace emulator
