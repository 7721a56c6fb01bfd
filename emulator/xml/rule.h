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
    /// What is inside is not looked at here.
    bool open = false;
    /// Hosts may send it more than once.
    bool repeats = false;

    static XmlRule leaf(const QString& name, XmlType type) { return {name, type, true, {}, false, false}; }
    static XmlRule optionalLeaf(const QString& name, XmlType type)
    {
        return {name, type, false, {}, false, false};
    }
    static XmlRule repeatedLeaf(const QString& name, XmlType type)
    {
        return {name, type, true, {}, false, true};
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

private:
    XmlVerdict checkParts(const XmlNode& node) const;
    const XmlRule* ruleFor(const QString& part) const;
};

/// The parameters that the receipt command takes.
const XmlRule& receiptRule();

} // namespace emulator
