#include "xml/rule.h"

#include <QStringList>

#include <algorithm>

namespace emulator {

XmlVerdict XmlRule::check(const XmlNode& node) const
{
    if (node.name != name || node.type != type)
        return XmlVerdict::badValue(node.name);
    if (!node.isContainer() && type != XmlType::Text && node.value.isEmpty())
        return XmlVerdict::badValue(node.name);
    if (open || !node.isContainer())
        return {};
    QStringList once;
    for (const XmlNode& part : node.children) {
        const auto rule = std::find_if(children.cbegin(), children.cend(),
            [&part](const XmlRule& candidate) { return candidate.name == part.name; });
        // What must be there is there once; what a host may add it may add again.
        if (rule == children.cend() || once.contains(part.name))
            return XmlVerdict::badValue(part.name);
        if (rule->required)
            once.append(part.name);
        if (const XmlVerdict verdict = rule->check(part); !verdict.isGood())
            return verdict;
    }
    for (const XmlRule& rule : children) {
        if (rule.required && node.child(rule.name) == nullptr)
            return XmlVerdict::badValue(rule.name);
    }
    return {};
}

namespace {

XmlRule listOf(const char* name, const QList<XmlRule>& record, bool required)
{
    const XmlRule entry{QLatin1String(name), XmlType::Structure, false, record, false};
    return {QLatin1String(name), XmlType::List, required, {entry}, false};
}

XmlRule optionalTree(const char* name, const QList<XmlRule>& children)
{
    return {QLatin1String(name), XmlType::Structure, false, children, false};
}

QList<XmlRule> positionRules()
{
    using Rule = XmlRule;
    constexpr auto text = XmlType::Text;
    constexpr auto number = XmlType::Integer;
    return {Rule::leaf("1030", text), Rule::leaf("1079", XmlType::Sum), Rule::leaf("1197", text),
        Rule::leaf("1023", XmlType::Thousandths), Rule::leaf("1199", number), Rule::leaf("1212", number),
        Rule::leaf("1214", number), Rule::leaf("2108", number), Rule::optionalLeaf("2102", number),
        Rule::openTree("1163", false), Rule::optionalLeaf("2110", number), Rule::optionalLeaf("2000", text),
        listOf("ItemDiscounts", {Rule::leaf("Name", text), Rule::leaf("Value", XmlType::Sum)}, false),
        Rule::leaf("PriceWithDiscount", XmlType::Sum),
        optionalTree("1224", {Rule::leaf("1171", text), Rule::leaf("1225", text)}),
        Rule::optionalLeaf("1222", text), Rule::optionalLeaf("1226", text), Rule::openTree("1223", false),
        optionalTree("1260",
            {Rule::leaf("1262", text), Rule::leaf("1263", text), Rule::leaf("1264", text),
                Rule::leaf("1265", text)}),
        Rule::optionalLeaf("1230", text), Rule::optionalLeaf("1231", text)};
}

} // namespace

const XmlRule& receiptRule()
{
    using Rule = XmlRule;
    constexpr auto text = XmlType::Text;
    constexpr auto sum = XmlType::Sum;
    constexpr auto number = XmlType::Integer;
    static const XmlRule rule = Rule::tree("3",
        {listOf("1059", positionRules(), true), Rule::leaf("1031", sum), Rule::leaf("1081", sum),
            Rule::leaf("1215", sum), Rule::leaf("1216", sum), Rule::leaf("1217", sum),
            Rule::leaf("1021", text), Rule::leaf("1054", number), Rule::leaf("DoNotPrint", number),
            Rule::optionalLeaf("1203", text), Rule::optionalLeaf("1008", text),
            Rule::optionalLeaf("1171", text), Rule::optionalLeaf("1187", text),
            Rule::optionalLeaf("1192", text),
            optionalTree("1256", {Rule::leaf("1227", text), Rule::leaf("1228", text)}),
            Rule::leaf("1055", number), Rule::optionalLeaf("HeaderText", text),
            Rule::optionalLeaf("Footer", text), Rule::optionalLeaf("TextAfterDoc", text)});
    return rule;
}

} // namespace emulator
