#include "xml/settings.h"

#include "register/hexdigits.h"
#include "register/parametertable.h"
#include "register/register.h"
#include "register/settingtable.h"

#include <algorithm>

namespace emulator {

namespace {

constexpr qsizetype mostHeaderLines = 4;

const SettingEntry* find(const QString& path)
{
    const QList<SettingEntry>& table = settingTable();
    const auto found = std::find_if(
        table.cbegin(), table.cend(), [&path](const SettingEntry& entry) { return entry.path == path; });
    return found == table.cend() ? nullptr : &*found;
}

XmlType typeOf(const SettingEntry& entry)
{
    return entry.kind == SettingEntry::Kind::Interval ? XmlType::Integer : XmlType::Text;
}

bool isPicture(const QString& text)
{
    const auto bitmap = bytesOfHexDigits(text.toLatin1());
    return text.isEmpty() || (bitmap && Logo::isHeaderPicture(*bitmap));
}

bool takes(const SettingEntry& entry, const QString& text)
{
    bool number = false;
    text.toUInt(&number);
    switch (entry.kind) {
    case SettingEntry::Kind::Flag:
        return Settings::isFlag(text);
    case SettingEntry::Kind::Count:
    case SettingEntry::Kind::Interval:
        return number;
    case SettingEntry::Kind::Width:
        return Settings::isWidth(text);
    case SettingEntry::Kind::Lines:
        return text.count(QLatin1Char('\n')) < mostHeaderLines;
    case SettingEntry::Kind::Picture:
        return isPicture(text);
    case SettingEntry::Kind::Text:
        break;
    }
    return true;
}

bool isBranch(const QString& path)
{
    const QList<SettingEntry>& table = settingTable();
    return std::any_of(table.cbegin(), table.cend(),
        [&path](const SettingEntry& entry) { return entry.path.startsWith(path + QLatin1Char('.')); });
}

// Walks down to the settings; a node that the table does not have, or one that the visitor does not like, is
// a bad value.
template <typename Node, typename Visitor>
XmlVerdict visit(Node& parent, const QString& parentPath, const Visitor& visitor)
{
    for (auto& node : parent.children) {
        const QString path = parentPath.isEmpty() ? node.name : parentPath + QLatin1Char('.') + node.name;
        XmlVerdict verdict;
        if (const SettingEntry* const entry = find(path))
            verdict = node.type == typeOf(*entry) && visitor(*entry, node)
                ? verdict
                : XmlVerdict::badValue(QStringLiteral("%1 does not take this value").arg(path));
        else
            verdict = isBranch(path) && node.isContainer()
                ? visit(node, path, visitor)
                : XmlVerdict::badValue(QStringLiteral("no setting %1").arg(path));
        if (!verdict.isGood())
            return verdict;
    }
    return {};
}

} // namespace

QString XmlSettings::value(const QString& path) const
{
    if (path == setting::picture)
        return QString::fromLatin1(m_device.state().logo.toHex());
    if (path == setting::printPicture)
        return m_device.parameters().isOn(parameter::companyLogo) ? QStringLiteral("true")
                                                                  : QStringLiteral("false");
    if (path != setting::header)
        return m_device.settings().text(path);
    QStringList lines = m_device.parameters().rows(parameter::headerLines);
    while (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines.join(QLatin1Char('\n'));
}

void XmlSettings::set(const QString& path, const QString& text)
{
    if (path == setting::picture) {
        m_device.logo().setHeaderPicture(QByteArray::fromHex(text.toLatin1()));
    } else if (path == setting::printPicture) {
        m_device.parameters().set(
            parameter::companyLogo, 0, Settings::isTrue(text) ? QStringLiteral("1") : QStringLiteral("0"));
    } else if (path == setting::header) {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int row = 0; row < mostHeaderLines; ++row)
            m_device.parameters().set(parameter::headerLines, row, lines.value(row));
    } else {
        m_device.settings().set(path, text);
    }
}

XmlAnswer XmlSettings::read(const XmlNode& asked) const
{
    XmlNode answer = asked;
    const XmlVerdict verdict = visit(answer, QString(), [this](const SettingEntry& entry, XmlNode& node) {
        node.value = value(entry.path);
        return true;
    });
    return verdict.isGood() ? XmlAnswer(answer) : XmlAnswer(verdict);
}

XmlVerdict XmlSettings::write(const XmlNode& wanted)
{
    if (m_device.document().isOpen())
        return Refusal::WrongState;
    QMap<QString, QString> values;
    const XmlVerdict verdict
        = visit(wanted, QString(), [&values](const SettingEntry& entry, const XmlNode& node) {
              values[entry.path] = node.value;
              return takes(entry, node.value);
          });
    for (auto value = values.cbegin(); verdict.isGood() && value != values.cend(); ++value)
        set(value.key(), value.value());
    return verdict;
}

} // namespace emulator
