#include "xml/settings.h"

#include "register/hexdigits.h"
#include "register/parametertable.h"
#include "register/register.h"
#include "xml/settingstable.h"

#include <algorithm>

namespace emulator {

namespace {

constexpr qsizetype mostHeaderLines = 4;
const QString headerPath = QStringLiteral("PRN.PrinterHeader.Cliche");
const QString picturePath = QStringLiteral("PRN.LogoImage.Image");
const QString printPicturePath = QStringLiteral("PRN.LogoImage.PrintLogo");
const QString widthPath = QStringLiteral("PRN.Printer.PrintWidthChars");

const XmlSetting* find(const QString& path)
{
    const QList<XmlSetting>& table = xmlSettingsTable();
    const auto found = std::find_if(
        table.cbegin(), table.cend(), [&path](const XmlSetting& setting) { return setting.path == path; });
    return found == table.cend() ? nullptr : &*found;
}

XmlType typeOf(const XmlSetting& setting)
{
    return setting.kind == XmlSetting::Kind::Interval ? XmlType::Integer : XmlType::Text;
}

bool isPicture(const QString& text)
{
    const auto bitmap = bytesOfHexDigits(text.toLatin1());
    return text.isEmpty() || (bitmap && Logo::isHeaderPicture(*bitmap));
}

bool takes(const XmlSetting& setting, const QString& text)
{
    bool number = false;
    text.toUInt(&number);
    switch (setting.kind) {
    case XmlSetting::Kind::Flag:
        return text == QStringLiteral("true") || text == QStringLiteral("false")
            || text == QStringLiteral("1") || text == QStringLiteral("0");
    case XmlSetting::Kind::Count:
    case XmlSetting::Kind::Interval:
        return number;
    case XmlSetting::Kind::Lines:
        return text.count(QLatin1Char('\n')) < mostHeaderLines;
    case XmlSetting::Kind::Picture:
        return isPicture(text);
    case XmlSetting::Kind::Text:
        break;
    }
    return true;
}

bool isTrue(const QString& text)
{
    return text == QStringLiteral("true") || text == QStringLiteral("1");
}

bool isBranch(const QString& path)
{
    const QList<XmlSetting>& table = xmlSettingsTable();
    return std::any_of(table.cbegin(), table.cend(),
        [&path](const XmlSetting& setting) { return setting.path.startsWith(path + QLatin1Char('.')); });
}

// Walks down to the settings; a node that the table does not have, or one that the visitor does not like, is
// a bad value.
template <typename Node, typename Visitor>
XmlVerdict visit(Node& parent, const QString& parentPath, const Visitor& visitor)
{
    for (auto& node : parent.children) {
        const QString path = parentPath.isEmpty() ? node.name : parentPath + QLatin1Char('.') + node.name;
        XmlVerdict verdict;
        if (const XmlSetting* const setting = find(path))
            verdict = node.type == typeOf(*setting) && visitor(*setting, node)
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

XmlSettings::XmlSettings(Register& device)
    : m_device(device)
{
    for (const XmlSetting& setting : xmlSettingsTable())
        m_values[setting.path] = setting.initial;
    m_values[widthPath] = QString::number(device.identity().width);
}

bool XmlSettings::isOn(const QString& path) const
{
    return isTrue(value(path));
}

QString XmlSettings::value(const QString& path) const
{
    if (path == picturePath)
        return QString::fromLatin1(m_device.state().logo.toHex());
    if (path == printPicturePath)
        return m_device.parameters().isOn(parameter::companyLogo) ? QStringLiteral("true")
                                                                  : QStringLiteral("false");
    if (path != headerPath)
        return m_values.value(path);
    QStringList lines = m_device.parameters().rows(parameter::headerLines);
    while (!lines.isEmpty() && lines.constLast().isEmpty())
        lines.removeLast();
    return lines.join(QLatin1Char('\n'));
}

void XmlSettings::set(const QString& path, const QString& text)
{
    if (path == picturePath) {
        m_device.logo().setHeaderPicture(QByteArray::fromHex(text.toLatin1()));
    } else if (path == printPicturePath) {
        m_device.parameters().set(
            parameter::companyLogo, 0, isTrue(text) ? QStringLiteral("1") : QStringLiteral("0"));
    } else if (path == headerPath) {
        const QStringList lines = text.split(QLatin1Char('\n'));
        for (int row = 0; row < mostHeaderLines; ++row)
            m_device.parameters().set(parameter::headerLines, row, lines.value(row));
    } else {
        m_values[path] = text;
    }
}

XmlAnswer XmlSettings::read(const XmlNode& asked) const
{
    XmlNode answer = asked;
    const XmlVerdict verdict = visit(answer, QString(), [this](const XmlSetting& setting, XmlNode& node) {
        node.value = value(setting.path);
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
        = visit(wanted, QString(), [&values](const XmlSetting& setting, const XmlNode& node) {
              values[setting.path] = node.value;
              return takes(setting, node.value);
          });
    for (auto value = values.cbegin(); verdict.isGood() && value != values.cend(); ++value)
        set(value.key(), value.value());
    return verdict;
}

} // namespace emulator
