#include "xml/treeform.h"

#include "register/tags.h"

#include <QRegularExpression>

namespace emulator::xmltreeform {

namespace {

// Two sums may come out a hair below nothing: the cash that is left of a payment less its change, and the
// price of what is given away, less all of it.
bool isDifference(const XmlNode& node, const XmlNode& parent)
{
    const bool isGift = node.name == QStringLiteral("PriceWithDiscount")
        && parent.child(QStringLiteral("ItemDiscounts")) != nullptr;
    return isGift || node.name == tag::cash;
}

bool isMinusZero(const XmlNode& node, const XmlNode& parent)
{
    return node.type == XmlType::Sum && node.value == QStringLiteral("-0.00") && !isDifference(node, parent);
}

bool isPadded(const XmlNode& node)
{
    static const QRegularExpression padding(QStringLiteral("^-?0[0-9]|^-0$"));
    const bool isNumber
        = node.type == XmlType::Integer || node.type == XmlType::Sum || node.type == XmlType::Thousandths;
    return isNumber && padding.match(node.value).hasMatch();
}

XmlVerdict checkWithin(const XmlNode& node, const XmlNode& parent)
{
    if (node.hasNamespace)
        return XmlVerdict::badData(QStringLiteral("pa %1: a namespace").arg(node.name));
    if (node.hasOddType)
        return XmlVerdict::badData(QStringLiteral("pa %1: t is no plain number").arg(node.name));
    if (isMinusZero(node, parent))
        return XmlVerdict::badData(QStringLiteral("pa %1: -0.00").arg(node.name));
    if (isPadded(node))
        return XmlVerdict::badData(QStringLiteral("pa %1: zeros before a number").arg(node.name));
    for (const XmlNode& part : node.children) {
        if (const XmlVerdict verdict = checkWithin(part, node); !verdict.isGood())
            return verdict;
    }
    return {};
}

} // namespace

XmlVerdict check(const XmlNode& tree)
{
    return checkWithin(tree, XmlNode());
}

} // namespace emulator::xmltreeform
