#pragma once

#include <QList>
#include <QString>

namespace frctl {

/// A line "key = value".
struct IniEntry
{
    QString key;
    QString value;
};

/// What stands under "[name]".
struct IniSection
{
    QString name;
    QList<IniEntry> entries;
};

/// The sections of a file: lines "[name]" and "key = value", blank ones, and comments behind # or ; at the
/// line's beginning. A value is the rest of its line without the blanks around it. Throws UsageError, with
/// file and line, for anything else, for a section or a key that comes twice, and for a key before the first
/// section.
QList<IniSection> readIniFile(const QString& fileName);

} // namespace frctl
