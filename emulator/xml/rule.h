#pragma once

#include "xml/tree.h"
#include "xml/verdict.h"

namespace emulator {

/// What the parameters of a command must look like.
struct XmlRule
{
    QString name;
    XmlType type = XmlType::Structure;
    bool required = true;
    QList<XmlRule> children;
    /// What is inside is not looked at, or by a strict register alone, where it has children.
    bool open = false;
    /// It may come more than once, and changes places with its neighbours that may.
    bool repeats = false;

    static XmlRule leaf(const QString& name, XmlType type) { return {name, type, true, {}, false, false}; }
    static XmlRule optionalLeaf(const QString& name, XmlType type)
    {
        return {name, type, false, {}, false, false};
    }
    static XmlRule optionalTree(const QString& name, const QList<XmlRule>& children)
    {
        return {name, XmlType::Structure, false, children, false, false};
    }
    static XmlRule repeated(XmlRule rule)
    {
        rule.repeats = true;
        return rule;
    }
    static XmlRule tree(const QString& name, const QList<XmlRule>& children)
    {
        return {name, XmlType::Structure, true, children, false, false};
    }
    static XmlRule openTree(const QString& name, bool required)
    {
        return {name, XmlType::Structure, required, {}, true, false};
    }

    /// A parameter that nobody knows, is missing or has another type is a bad value; the verdict names it.
    XmlVerdict check(const XmlNode& node) const;
    /// The same for what is open, and the order in which the parameters stand; for one that has passed.
    XmlVerdict checkStrictly(const XmlNode& node) const;
    /// The parameter may come more than once.
    bool repeatsPart(const QString& part) const;

private:
    XmlVerdict checkParts(const XmlNode& node) const;
    XmlVerdict checkPlace(const XmlNode& part, qsizetype reached, const QString& before) const;
    const XmlRule* ruleFor(const QString& part) const;
    /// Neighbours that may change places share one.
    qsizetype placeOf(const XmlRule& part) const;
};

/// The parameters that the receipt command takes.
const XmlRule& receiptRule();

} // namespace emulator
