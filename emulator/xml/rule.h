#pragma once

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

    static XmlRule leaf(const char* name, XmlType type)
    {
        return {QLatin1String(name), type, true, {}, false};
    }
    static XmlRule optionalLeaf(const char* name, XmlType type)
    {
        return {QLatin1String(name), type, false, {}, false};
    }
    static XmlRule tree(const char* name, const QList<XmlRule>& children)
    {
        return {QLatin1String(name), XmlType::Structure, true, children, false};
    }
    static XmlRule openTree(const char* name, bool required)
    {
        return {QLatin1String(name), XmlType::Structure, required, {}, true};
    }

    /// A parameter that nobody knows, is missing or has another type is a bad value; the verdict names it.
    XmlVerdict check(const XmlNode& node) const;
};

/// The parameters that the receipt command takes.
const XmlRule& receiptRule();

} // namespace emulator
