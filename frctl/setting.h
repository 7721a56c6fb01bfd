#pragma once

#include <QList>
#include <QString>

namespace frctl {

struct OptionRow;

/// An option with the value that it has, and who gave it.
struct Setting
{
    const OptionRow* option = nullptr;
    /// Empty for a switch.
    QString value = {};
    /// "FILE: [SECTION] KEY"; empty for the command line.
    QString origin = {};
};

/// What was said, in that order.
using Settings = QList<Setting>;

} // namespace frctl
