#include "inifile.h"

#include "errors.h"
#include "frctltr.h"
#include "inputfile.h"
#include "showntext.h"

#include <algorithm>

namespace frctl {

namespace {

/// Quotes around the whole of a value are none of it.
QString withoutQuotes(const QString& value)
{
    const bool isQuoted = value.size() > 1 && value.front() == value.back()
        && (value.front() == QLatin1Char('"') || value.front() == QLatin1Char('\''));
    return isQuoted ? value.mid(1, value.size() - 2) : value;
}

class IniReader
{
public:
    explicit IniReader(const QString& fileName)
        : m_fileName(fileName)
    {
    }

    QList<IniSection> read()
    {
        for (const QString& line : readLines(m_fileName)) {
            ++m_line;
            take(line.trimmed());
        }
        return m_sections;
    }

private:
    void take(const QString& line)
    {
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
            return;
        if (line.startsWith(QLatin1Char('[')))
            beginSection(line);
        else
            addEntry(line);
    }

    void beginSection(const QString& line)
    {
        const QString name = line.mid(1, line.size() - 2).trimmed();
        if (!line.endsWith(QLatin1Char(']')) || name.isEmpty())
            refuse(tr("\"%1\" is no [NAME]").arg(receipt::shownText(line)));
        const bool isThere = std::any_of(m_sections.cbegin(), m_sections.cend(),
            [&name](const IniSection& section) { return section.name == name; });
        if (isThere)
            refuse(tr("[%1] is there already").arg(name));
        m_sections.append({name, {}});
    }

    void addEntry(const QString& line)
    {
        const qsizetype sign = line.indexOf(QLatin1Char('='));
        const QString key = line.left(sign).trimmed();
        if (sign < 0 || key.isEmpty())
            refuse(tr("\"%1\" is no KEY = VALUE").arg(receipt::shownText(line)));
        if (m_sections.isEmpty())
            refuse(tr("%1 stands before the first [NAME]").arg(key));
        QList<IniEntry>& entries = m_sections.last().entries;
        const bool isThere = std::any_of(
            entries.cbegin(), entries.cend(), [&key](const IniEntry& entry) { return entry.key == key; });
        if (isThere)
            refuse(tr("[%1] %2 is there already").arg(m_sections.constLast().name, key));
        entries.append({key, withoutQuotes(line.mid(sign + 1).trimmed())});
    }

    [[noreturn]] void refuse(const QString& reason) const
    {
        throw UsageError(QStringLiteral("%1:%2: %3").arg(m_fileName).arg(m_line).arg(reason));
    }

    const QString m_fileName;
    int m_line = 0;
    QList<IniSection> m_sections;
};

} // namespace

QList<IniSection> readIniFile(const QString& fileName)
{
    return IniReader(fileName).read();
}

} // namespace frctl
