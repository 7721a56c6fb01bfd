#include "xml/receiptform.h"

#include "register/hexdigits.h"
#include "register/tags.h"
#include "xml/rule.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace emulator::xmlreceiptform {

namespace {

using Breach = bool (*)(const XmlNode& node, const XmlNode& receipt);

struct Condition
{
    Breach isBroken;
    const char* words;
};

bool hasNoFooter(const XmlNode& receipt, const XmlNode&)
{
    return receipt.child(QStringLiteral("Footer")) == nullptr;
}

// Hosts tell the change there and nothing else, also when there is none or money is missing.
bool isFooterNotChange(const XmlNode& receipt, const XmlNode&)
{
    static const QRegularExpression change(QStringLiteral("^СДАЧА: -?(0|[1-9][0-9]*)\\.[0-9]{2}\\z"));
    return !change.match(receipt.textOf(QStringLiteral("Footer"))).hasMatch();
}

// Hosts without a tail send none.
bool isTailEmpty(const XmlNode& receipt, const XmlNode&)
{
    const XmlNode* const tail = receipt.child(QStringLiteral("TextAfterDoc"));
    return tail != nullptr && tail->value.isEmpty();
}

// Hosts put the tax system behind all that they were given for the receipt.
bool isTaxSystemNotLast(const XmlNode& receipt, const XmlNode&)
{
    const auto last = std::find_if(receipt.children.crbegin(), receipt.children.crend(),
        [](const XmlNode& part) { return receiptRule().repeatsPart(part.name); });
    return last != receipt.children.crend() && last->name != tag::taxSystem;
}

// Hosts that know no INN of the cashier leave it out. A receipt may have an empty one among its requisites.
bool isInnEmpty(const XmlNode& shift, const XmlNode&)
{
    const XmlNode* const inn = shift.child(tag::cashierInn);
    return inn != nullptr && inn->value.isEmpty();
}

bool isReasonWrong(const XmlNode& registration, const XmlNode&)
{
    constexpr int changedParameters = 8;
    return registration.numberOf(tag::changeReasons) != changedParameters;
}

// Hosts send all three or none; those of which nothing is known are empty.
bool isSupplierPartial(const XmlNode& position, const XmlNode&)
{
    const bool supplier = position.child(tag::supplier) != nullptr;
    return supplier != (position.child(tag::agentKinds) != nullptr)
        || supplier != (position.child(tag::supplierInn) != nullptr);
}

bool isAgentEmpty(const XmlNode& position, const XmlNode&)
{
    const XmlNode* const agent = position.child(tag::agent);
    return agent != nullptr && agent->children.isEmpty();
}

bool isDiscountNotOne(const XmlNode& position, const XmlNode&)
{
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    return discounts != nullptr && discounts->children.size() != 1;
}

bool isDiscountNothing(const XmlNode& position, const XmlNode&)
{
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    return discounts != nullptr && discounts->children.constFirst().moneyOf(QStringLiteral("Value")) == 0;
}

bool isDiscountMisnamed(const XmlNode& position, const XmlNode&)
{
    const XmlNode* const discounts = position.child(QStringLiteral("ItemDiscounts"));
    return discounts != nullptr
        && discounts->children.constFirst().textOf(QStringLiteral("Name")) != QStringLiteral("Скидка");
}

// Hosts say goods, 1, of what they know no object of.
bool isObjectMissing(const XmlNode& position, const XmlNode&)
{
    return position.numberOf(tag::paymentObject) == 0;
}

// A discount of half a kopeck for the position and less is not sent, and the price with it is rounded to the
// kopeck: further than that it cannot be from the price without a discount. In thousandths of a kopeck.
bool isPriceChanged(const XmlNode& position, const XmlNode&)
{
    constexpr double unsentDiscount = 500;
    const auto quantity = static_cast<double>(qAbs(position.quantityOf(tag::quantity)));
    const Money change = position.moneyOf(QStringLiteral("PriceWithDiscount")) - position.moneyOf(tag::price);
    return position.child(QStringLiteral("ItemDiscounts")) == nullptr && change != 0
        && static_cast<double>(qAbs(change)) * quantity >= unsentDiscount + quantity / 2;
}

// Tags of the kinds of code that the fiscal data format knows.
bool isGoodsKind(const QString& name)
{
    const int kind = name.size() == 4 ? name.toInt() : 0;
    return (kind >= 1300 && kind <= 1309) || (kind >= 1320 && kind <= 1325);
}

bool isGoods(const XmlNode& code)
{
    const auto bytes = bytesOfHexDigits(code.value.toLatin1());
    return code.type == XmlType::Text && isGoodsKind(code.name) && bytes && !bytes->isEmpty();
}

bool isGoodsCodeWrong(const XmlNode& parent, const XmlNode&)
{
    const XmlNode* const goods = parent.child(tag::goodsCode);
    return goods != nullptr && (goods->children.size() != 1 || !isGoods(goods->children.constFirst()));
}

// Goods that are sold or come back; no other document changes their status.
bool isStatusWrong(const XmlNode& position, const XmlNode& receipt)
{
    constexpr int sold = 1;
    constexpr int returned = 3;
    constexpr int unchanged = 255;
    const XmlNode* const node = position.child(tag::assignedStatus);
    const qint64 status = position.numberOf(tag::assignedStatus);
    const bool isReturn = receipt.numberOf(tag::settlement) == 2;
    return node != nullptr && (isReturn ? status != returned : status != sold && status != unchanged);
}

bool isMarkingModeWrong(const XmlNode& query, const XmlNode&)
{
    return query.numberOf(tag::markingMode) != 0;
}

constexpr const char* goodsCodeWords
    = "1163 has one code in hexadecimal, with a tag from 1300 to 1309 or from 1320 to 1325, as a text";

constexpr Condition receiptConditions[] = {
    {&hasNoFooter, "no Footer"},
    {&isFooterNotChange, "Footer is \"СДАЧА: \" and the change"},
    {&isTailEmpty, "TextAfterDoc is empty"},
    {&isTaxSystemNotLast, "1055 is the last requisite before HeaderText and Footer"},
};

constexpr Condition shiftConditions[] = {
    {&isInnEmpty, "1203 is empty"},
};

constexpr Condition registrationConditions[] = {
    {&isReasonWrong, "1205 is 8"},
};

constexpr Condition positionConditions[] = {
    {&isSupplierPartial, "1224, 1222 and 1226 come together"},
    {&isAgentEmpty, "1223 is empty"},
    {&isDiscountNotOne, "ItemDiscounts has one record"},
    {&isDiscountNothing, "a discount of 0.00"},
    {&isDiscountMisnamed, "the name of a discount is \"Скидка\""},
    {&isObjectMissing, "1212 is 0"},
    {&isPriceChanged, "PriceWithDiscount is not 1079, and there is no discount"},
    {&isGoodsCodeWrong, goodsCodeWords},
    {&isStatusWrong, "2110 is 1 or 255 in a sale and 3 in a return"},
};

constexpr Condition markingConditions[] = {
    {&isMarkingModeWrong, "2102 is 0"},
    {&isGoodsCodeWrong, goodsCodeWords},
};

template <size_t Size>
XmlVerdict judge(const Condition (&conditions)[Size], const XmlNode& node, const XmlNode& receipt)
{
    const Condition* const broken = std::find_if(std::begin(conditions), std::end(conditions),
        [&](const Condition& condition) { return condition.isBroken(node, receipt); });
    return broken == std::end(conditions)
        ? XmlVerdict()
        : XmlVerdict::badValue(QStringLiteral("pa %1: %2").arg(node.name, QString::fromUtf8(broken->words)));
}

} // namespace

XmlVerdict check(const XmlNode& receipt)
{
    XmlVerdict verdict = judge(receiptConditions, receipt, receipt);
    for (const XmlNode& position : receipt.child(tag::positions)->children) {
        if (!verdict.isGood())
            break;
        verdict = judge(positionConditions, position, receipt);
    }
    return verdict;
}

XmlVerdict checkShift(const XmlNode& shift)
{
    return judge(shiftConditions, shift, shift);
}

XmlVerdict checkRegistration(const XmlNode& registration)
{
    return judge(registrationConditions, registration, registration);
}

XmlVerdict checkMarking(const XmlNode& query)
{
    return judge(markingConditions, query, query);
}

} // namespace emulator::xmlreceiptform
