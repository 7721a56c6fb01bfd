#include "xml/rule.h"

#include "register/tags.h"

#include <QStringList>

#include <algorithm>

namespace emulator {

XmlVerdict XmlRule::check(const XmlNode& node) const
{
    if (node.name != name)
        return XmlVerdict::badValue(QStringLiteral("pa %1 instead of %2").arg(node.name, name));
    if (node.type != type)
        return XmlVerdict::badValue(QStringLiteral("pa %1: type %2 instead of %3")
                                        .arg(name)
                                        .arg(static_cast<int>(node.type))
                                        .arg(static_cast<int>(type)));
    if (!node.isContainer() && type != XmlType::Text && node.value.isEmpty())
        return XmlVerdict::badValue(QStringLiteral("pa %1: empty").arg(name));
    return open || !node.isContainer() ? XmlVerdict() : checkParts(node);
}

XmlVerdict XmlRule::checkParts(const XmlNode& node) const
{
    QStringList once;
    for (const XmlNode& part : node.children) {
        const XmlRule* const rule = ruleFor(part.name);
        // Hosts send twice what they were given twice, and the first one counts. That goes for what may be
        // missing, to a lenient register, and for the tax system, which a close that is tried again has
        // twice; the rest has one place in a request.
        if (rule == nullptr)
            return XmlVerdict::badValue(QStringLiteral("pa %1: %2 is unknown").arg(name, part.name));
        if (once.contains(part.name) && !rule->repeats)
            return XmlVerdict::badValue(QStringLiteral("pa %1: %2 twice").arg(name, part.name));
        if (rule->required)
            once.append(part.name);
        if (const XmlVerdict verdict = rule->check(part); !verdict.isGood())
            return verdict;
    }
    const auto missing = std::find_if(children.cbegin(), children.cend(),
        [&once](const XmlRule& rule) { return rule.required && !once.contains(rule.name); });
    return missing == children.cend()
        ? XmlVerdict()
        : XmlVerdict::badValue(QStringLiteral("pa %1: no %2").arg(name, missing->name));
}

XmlVerdict XmlRule::checkStrictly(const XmlNode& node) const
{
    if (open && children.isEmpty())
        return {};
    if (const XmlVerdict verdict = open ? checkParts(node) : XmlVerdict(); !verdict.isGood())
        return verdict;
    qsizetype reached = -1;
    QString before;
    for (const XmlNode& part : node.children) {
        if (const XmlVerdict verdict = checkPlace(part, reached, before); !verdict.isGood())
            return verdict;
        const XmlRule* const rule = ruleFor(part.name);
        if (const XmlVerdict verdict = rule->checkStrictly(part); !verdict.isGood())
            return verdict;
        reached = placeOf(*rule);
        before = part.name;
    }
    return {};
}

XmlVerdict XmlRule::checkPlace(const XmlNode& part, qsizetype reached, const QString& before) const
{
    const XmlRule& rule = *ruleFor(part.name);
    const qsizetype place = placeOf(rule);
    if (place == reached && !rule.repeats)
        return XmlVerdict::badValue(QStringLiteral("pa %1: %2 twice").arg(name, part.name));
    return place < reached
        ? XmlVerdict::badData(QStringLiteral("pa %1: %2 before %3").arg(name, before, part.name))
        : XmlVerdict();
}

qsizetype XmlRule::placeOf(const XmlRule& part) const
{
    qsizetype place = &part - children.data();
    while (place > 0 && part.repeats && children.at(place - 1).repeats)
        --place;
    return place;
}

const XmlRule* XmlRule::ruleFor(const QString& part) const
{
    const auto rule = std::find_if(children.cbegin(), children.cend(),
        [&part](const XmlRule& candidate) { return candidate.name == part; });
    return rule == children.cend() ? nullptr : &*rule;
}

bool XmlRule::repeatsPart(const QString& part) const
{
    const XmlRule* const rule = ruleFor(part);
    return rule != nullptr && rule->repeats;
}

namespace {

XmlRule listOf(const QString& name, const QList<XmlRule>& record, bool required)
{
    const XmlRule entry = XmlRule::repeated(XmlRule::optionalTree(name, record));
    return {name, XmlType::List, required, {entry}, false, false};
}

QList<XmlRule> agentRules()
{
    QList<XmlRule> rules;
    for (const QString& name : {tag::transferAddress, tag::transferInn, tag::transferName,
             tag::agentOperation, tag::agentPhone, tag::paymentOperatorPhone, tag::transferPhone})
        rules.append(XmlRule::optionalLeaf(name, XmlType::Text));
    return rules;
}

QList<XmlRule> positionRules()
{
    using Rule = XmlRule;
    constexpr auto text = XmlType::Text;
    constexpr auto number = XmlType::Integer;
    return {Rule::leaf(tag::itemName, text), Rule::leaf(tag::price, XmlType::Sum),
        Rule::leaf(tag::measureName, text), Rule::leaf(tag::quantity, XmlType::Thousandths),
        Rule::leaf(tag::taxRate, number), Rule::leaf(tag::paymentObject, number),
        Rule::leaf(tag::paymentMethod, number), Rule::leaf(tag::unit, number),
        Rule::optionalLeaf(tag::markingMode, number), Rule::openTree(tag::goodsCode, false),
        Rule::optionalLeaf(tag::assignedStatus, number), Rule::optionalLeaf(tag::markingCode, text),
        listOf(QStringLiteral("ItemDiscounts"),
            {Rule::leaf(QStringLiteral("Name"), text), Rule::leaf(QStringLiteral("Value"), XmlType::Sum)},
            false),
        Rule::leaf(QStringLiteral("PriceWithDiscount"), XmlType::Sum),
        Rule::optionalTree(
            tag::supplier, {Rule::leaf(tag::supplierPhone, text), Rule::leaf(tag::supplierName, text)}),
        Rule::optionalLeaf(tag::agentKinds, text), Rule::optionalLeaf(tag::supplierInn, text),
        XmlRule{tag::agent, XmlType::Structure, false, agentRules(), true, false},
        Rule::optionalTree(tag::industry,
            {Rule::leaf(tag::industryAuthority, text), Rule::leaf(tag::industryDate, text),
                Rule::leaf(tag::industryNumber, text), Rule::leaf(tag::industryValue, text)}),
        Rule::optionalLeaf(tag::country, text), Rule::optionalLeaf(tag::declaration, text)};
}

} // namespace

const XmlRule& receiptRule()
{
    using Rule = XmlRule;
    constexpr auto text = XmlType::Text;
    constexpr auto sum = XmlType::Sum;
    constexpr auto number = XmlType::Integer;
    static const XmlRule rule = Rule::tree(QStringLiteral("3"),
        {listOf(tag::positions, positionRules(), true), Rule::leaf(tag::cash, sum),
            Rule::leaf(tag::electronic, sum), Rule::leaf(tag::prepayment, sum), Rule::leaf(tag::credit, sum),
            Rule::leaf(tag::otherPayment, sum), Rule::leaf(tag::cashier, text),
            Rule::leaf(tag::settlement, number), Rule::leaf(QStringLiteral("DoNotPrint"), number),
            Rule::repeated(Rule::optionalLeaf(tag::cashierInn, text)),
            Rule::repeated(Rule::optionalLeaf(tag::customerAddress, text)),
            Rule::repeated(Rule::optionalLeaf(tag::supplierPhone, text)),
            Rule::repeated(Rule::optionalLeaf(tag::place, text)),
            Rule::repeated(Rule::optionalLeaf(tag::additional, text)),
            Rule::repeated(Rule::optionalTree(
                tag::customer, {Rule::leaf(tag::customerName, text), Rule::leaf(tag::customerInn, text)})),
            Rule::repeated(Rule::leaf(tag::taxSystem, number)),
            Rule::optionalLeaf(QStringLiteral("HeaderText"), text),
            Rule::optionalLeaf(QStringLiteral("Footer"), text),
            Rule::optionalLeaf(QStringLiteral("TextAfterDoc"), text)});
    return rule;
}

} // namespace emulator
