#include "xml/treeform.h"

#include "register/tags.h"

#include <QRegularExpression>

namespace emulator::xmltreeform {

namespace {

// The cash that is left of a payment less its change may come out a hair below nothing: it is taken there
// alone.
bool isMinusZero(const XmlNode& node)
{
    return node.type == XmlType::Sum && node.value == QStringLiteral("-0.00") && node.name != tag::cash;
}

bool isPadded(const XmlNode& node)
{
    static const QRegularExpression padding(QStringLiteral("^-?0[0-9]|^-0$"));
    const bool isNumber
        = node.type == XmlType::Integer || node.type == XmlType::Sum || node.type == XmlType::Thousandths;
    return isNumber && padding.match(node.value).hasMatch();
}

} // namespace

XmlVerdict check(const XmlNode& tree)
{
    if (tree.hasNamespace)
        return XmlVerdict::badData(QStringLiteral("pa %1: a namespace").arg(tree.name));
    if (tree.hasOddType)
        return XmlVerdict::badData(QStringLiteral("pa %1: t is no plain number").arg(tree.name));
    if (isMinusZero(tree))
        return XmlVerdict::badData(QStringLiteral("pa %1: -0.00").arg(tree.name));
    if (isPadded(tree))
        return XmlVerdict::badData(QStringLiteral("pa %1: zeros before a number").arg(tree.name));
    for (const XmlNode& part : tree.children) {
        if (const XmlVerdict verdict = check(part); !verdict.isGood())
            return verdict;
    }
    return {};
}

} // namespace emulator::xmltreeform
