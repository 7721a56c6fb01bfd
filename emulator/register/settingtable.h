#pragma once

#include <QList>
#include <QString>

namespace emulator {

/// One setting of the tree as it leaves the factory.
struct XmlSetting
{
    enum class Kind { Text, Flag, Count, Interval, Lines, Picture };

    /// Section, subsection and name with points between them.
    QString path;
    Kind kind;
    QString initial;
};

const QList<XmlSetting>& xmlSettingsTable();

} // namespace emulator
