#include "xml/settingsform.h"

#include <QSet>

namespace emulator::xmlsettingsform {

namespace {

constexpr int settingsDepth = 3;

XmlVerdict bad(const XmlNode& node, const char* words)
{
    return XmlVerdict::badValue(QStringLiteral("pa %1: %2").arg(node.name, QLatin1String(words)));
}

XmlVerdict checkNode(const XmlNode& node, int depth, bool isQuestion);

XmlVerdict checkLevel(const XmlNode& level, int depth, bool isQuestion)
{
    QSet<QString> names;
    for (const XmlNode& node : level.children) {
        if (names.contains(node.name))
            return XmlVerdict::badValue(QStringLiteral("pa %1: %2 twice").arg(level.name, node.name));
        names.insert(node.name);
        if (const XmlVerdict verdict = checkNode(node, depth + 1, isQuestion); !verdict.isGood())
            return verdict;
    }
    return level.children.isEmpty() ? bad(level, "empty") : XmlVerdict();
}

XmlVerdict checkNode(const XmlNode& node, int depth, bool isQuestion)
{
    if (node.name.contains(QLatin1Char('.')))
        return bad(node, "a path instead of a name");
    if (depth < settingsDepth)
        return node.type == XmlType::Structure ? checkLevel(node, depth, isQuestion)
                                               : bad(node, "no structure");
    return isQuestion && !node.value.isEmpty() ? bad(node, "a value in a question") : XmlVerdict();
}

} // namespace

XmlVerdict checkReading(const XmlNode& tree)
{
    return checkLevel(tree, 0, true);
}

XmlVerdict checkWriting(const XmlNode& tree)
{
    return checkLevel(tree, 0, false);
}

} // namespace emulator::xmlsettingsform
