#include "inifile.h"

#include "devicestr.h"

#include <algorithm>

namespace devices {

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
    QList<IniSection> read(const QStringList& lines)
    {
        for (const QString& line : lines) {
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
            refuse(tr("\"%1\" is no [NAME]").arg(line));
        const bool isThere = std::any_of(m_sections.cbegin(), m_sections.cend(),
            [&name](const IniSection& section) { return section.name == name; });
        if (isThere)
            refuse(tr("[%1] is there already").arg(name));
        m_sections.append({name, {}, m_line});
    }

    void addEntry(const QString& line)
    {
        const qsizetype sign = line.indexOf(QLatin1Char('='));
        const QString key = line.left(sign).trimmed();
        if (sign < 0 || key.isEmpty())
            refuse(tr("\"%1\" is no KEY = VALUE").arg(line));
        if (m_sections.isEmpty())
            refuse(tr("%1 stands before the first [NAME]").arg(key));
        QList<IniEntry>& entries = m_sections.last().entries;
        const bool isThere = std::any_of(
            entries.cbegin(), entries.cend(), [&key](const IniEntry& entry) { return entry.key == key; });
        if (isThere)
            refuse(tr("[%1] %2 is there already").arg(m_sections.constLast().name, key));
        entries.append({key, withoutQuotes(line.mid(sign + 1).trimmed()), m_line});
    }

    [[noreturn]] void refuse(const QString& reason) const { throw IniError(m_line, reason); }

    int m_line = 0;
    QList<IniSection> m_sections;
};

} // namespace

QList<IniSection> readIni(const QStringList& lines)
{
    return IniReader().read(lines);
}

} // namespace devices
