#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <stdexcept>

namespace devices {

/// A line of a configuration that is none.
class IniError : public std::runtime_error
{
public:
    IniError(int line, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_line(line)
    {
    }

    /// From 1.
    int line() const { return m_line; }

private:
    int m_line;
};

/// A line "key = value".
struct IniEntry
{
    QString key;
    QString value;
    /// From 1.
    int line = 0;
};

/// What stands under "[name]".
struct IniSection
{
    QString name;
    QList<IniEntry> entries;
    /// Of its name, from 1.
    int line = 0;
};

/// The sections of a configuration, which tells where registers are: lines "[name]" and "key = value", blank
/// ones, and comments behind # or ; at the line's beginning. A value is the rest of its line without the
/// blanks around it, and without quotes around the whole of it. Throws IniError for anything else, for a
/// section or a key that comes twice, and for a key before the first section.
QList<IniSection> readIni(const QStringList& lines);

} // namespace devices
