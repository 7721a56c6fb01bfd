#include "parameterlist.h"

#include "stringutils.h"
#include "xmlparameternames.h"

#include <QRegularExpression>

namespace frctl {

namespace {

bool isRightLine(const QString& line, int width)
{
    // A value is set flush right; one that fills a line is a word that was broken.
    return line.startsWith(QLatin1Char(' ')) || (line.size() == width && !line.contains(QLatin1Char(' ')));
}

/// Takes the lines of a value from the position on.
QString takeValue(const QStringList& lines, qsizetype& index, int width, QLatin1Char separator)
{
    QString value;
    bool isBroken = false;
    while (index < lines.size() && isRightLine(lines.at(index), width)) {
        const QString& line = lines.at(index++);
        if (!value.isEmpty() && !isBroken)
            value += separator;
        value += line.trimmed();
        isBroken = !line.startsWith(QLatin1Char(' '));
    }
    return value;
}

const QRegularExpression& hexHeading()
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d+)\\.(\\d*)(?: (.*))?$"));
    return pattern;
}

/// Takes the value out of the line in which it follows its caption. Without one the line ends early:
/// no caption of a register fills it.
QString cutValue(QString& text, bool fillsLine)
{
    if (!fillsLine)
        return {};
    static const QRegularExpression gap(QStringLiteral(" {2,}(?=\\S)"));
    qsizetype end = text.lastIndexOf(gap);
    if (end < 0)
        end = text.lastIndexOf(QLatin1Char(' '));
    QString value = text.mid(end + 1).trimmed();
    text.truncate(qMax<qsizetype>(end, 0));
    return value;
}

ParameterEntry takeHexEntry(const QStringList& lines, qsizetype& index, int width)
{
    const QRegularExpressionMatch heading = hexHeading().match(lines.at(index));
    const qsizetype captionStart = heading.capturedStart(3);
    QString text = captionStart < 0 ? QString() : QLatin1Char(' ') + heading.captured(3);
    qsizetype lastLength = lines.at(index++).size();
    while (index < lines.size() && !isRightLine(lines.at(index), width)
        && !hexHeading().match(lines.at(index)).hasMatch()) {
        text += QLatin1Char(' ') + lines.at(index);
        lastLength = lines.at(index++).size();
    }
    ParameterEntry entry;
    entry.id = heading.captured(1) + QLatin1Char('.') + heading.captured(2);
    const bool valueFollows = index < lines.size() && isRightLine(lines.at(index), width);
    entry.value = valueFollows ? takeValue(lines, index, width, QLatin1Char(' '))
                               : cutValue(text, lastLength == width);
    entry.caption = text.trimmed();
    return entry;
}

bool beginsWith(const QStringList& lines, qsizetype index, const QStringList& caption)
{
    if (index + caption.size() > lines.size())
        return false;
    const QString& end = caption.constLast();
    const QString& line = lines.at(index + caption.size() - 1);
    return lines.mid(index, caption.size() - 1) == caption.mid(0, caption.size() - 1)
        && (line == end || line.startsWith(end + QLatin1Char(' ')));
}

ParameterEntry takeXmlEntry(const QStringList& lines, qsizetype& index, int width)
{
    ParameterEntry entry;
    QStringList heading{lines.at(index)};
    for (const XmlParameterName& name : xmlParameterNames()) {
        const QString caption = QString::fromUtf8(name.caption);
        const QStringList wrapped
            = stringutils::wrappedString(QStringLiteral("* ") + caption, QString(), width);
        // One caption may be the beginning of another.
        if (caption.size() <= entry.caption.size() || !beginsWith(lines, index, wrapped))
            continue;
        entry.id = QLatin1String(name.path);
        entry.caption = caption;
        heading = wrapped;
    }
    if (entry.id.isEmpty())
        entry.caption = heading.constLast().mid(2);
    index += heading.size();
    entry.value = lines.at(index - 1).mid(heading.constLast().size()).trimmed();
    const QString rest = takeValue(lines, index, width, QLatin1Char('\n'));
    if (!entry.value.isEmpty() && !rest.isEmpty())
        entry.value += QLatin1Char('\n');
    entry.value += rest;
    return entry;
}

} // namespace

bool ParameterEntry::matches(const QString& wanted) const
{
    static const QRegularExpression number(QStringLiteral("^[\\d.]+$"));
    return id == wanted || id.startsWith(wanted + QLatin1Char('.'))
        || (!number.match(wanted).hasMatch() && caption.contains(wanted, Qt::CaseInsensitive));
}

QList<ParameterEntry> readHexDescription(const QStringList& lines, int width)
{
    QList<ParameterEntry> entries;
    QString arrayCaption;
    qsizetype index = 0;
    while (index < lines.size()) {
        if (!hexHeading().match(lines.at(index)).hasMatch()) {
            ++index;
            continue;
        }
        ParameterEntry entry = takeHexEntry(lines, index, width);
        if (entry.id.endsWith(QLatin1Char('.'))) {
            arrayCaption = entry.caption;
            continue;
        }
        if (entry.caption.isEmpty())
            entry.caption = arrayCaption;
        entries.append(entry);
    }
    return entries;
}

QList<ParameterEntry> readXmlDescription(const QStringList& lines, int width)
{
    QList<ParameterEntry> entries;
    qsizetype index = 0;
    while (index < lines.size()) {
        if (lines.at(index).startsWith(QStringLiteral("* ")))
            entries.append(takeXmlEntry(lines, index, width));
        else
            ++index;
    }
    return entries;
}

} // namespace frctl
