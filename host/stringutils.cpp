#include "stringutils.h"

#include <utility>

namespace {

QString withoutTrailingBlanks(const QString& text)
{
    qsizetype length = text.length();
    while (length > 0 && text.at(length - 1).isSpace())
        --length;
    return text.left(length);
}

QString withoutLeadingBlanks(const QString& text)
{
    qsizetype start = 0;
    while (start < text.length() && text.at(start) == QLatin1Char(' '))
        ++start;
    return text.mid(start);
}

/// Breaks one line at blanks, and inside a word only where the word alone is too long.
void wrapLine(const QString& line, qsizetype width, QStringList& lines)
{
    QString rest = withoutTrailingBlanks(line);
    while (rest.length() > width) {
        QString head = withoutTrailingBlanks(rest.left(rest.lastIndexOf(QLatin1Char(' '), width) + 1));
        if (head.isEmpty())
            head = rest.left(width);
        lines.append(withoutTrailingBlanks(head));
        rest = withoutLeadingBlanks(rest.mid(head.length()));
    }
    lines.append(rest);
}

QStringList wrap(const QString& text, qsizetype width)
{
    QStringList lines;
    for (const QString& line : text.split(QLatin1Char('\n')))
        wrapLine(line, width, lines);
    return lines;
}

QString joined(const QString& left, const QString& right, qsizetype width)
{
    return right.isEmpty() ? left : left + right.rightJustified(width - left.length());
}

} // namespace

namespace stringutils {

QStringList wrappedString(const QString& left, const QString& right, int width)
{
    // A width of 0 or less is no width at all: nothing is wrapped then.
    const qsizetype limit = width > 0 ? width : left.length() + 1 + right.length();
    QStringList lines = wrap(left, limit);
    const QString rightText = withoutTrailingBlanks(right);
    if (rightText.isEmpty())
        return lines;

    QStringList rightLines = wrap(rightText, limit);
    const QString rightStart = withoutTrailingBlanks(rightText.section(QLatin1Char('\n'), 0, 0));
    const QString last = lines.constLast();
    // At least one blank stands between the two texts.
    if (last.isEmpty() || last.length() + 1 + rightStart.length() <= limit)
        lines.last() = joined(last, rightLines.takeFirst(), limit);
    for (const QString& line : std::as_const(rightLines))
        lines.append(joined(QString(), line, limit));
    return lines;
}

QString removeControlCharacters(const QString& text, bool keepLineFeeds)
{
    QString result = text;
    result.removeIf([keepLineFeeds](QChar character) {
        const bool isControl = character < QChar(0x20) || character == QChar(0x7F);
        return isControl && !(keepLineFeeds && character == QLatin1Char('\n'));
    });
    return result;
}

} // namespace stringutils
