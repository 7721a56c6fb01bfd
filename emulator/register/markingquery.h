#pragma once

#include <QByteArray>

namespace emulator {

/// A marking code that the host asks about.
struct MarkingQuery
{
    QByteArray code;
    /// What the goods are going to be, as tag 2003 numbers it.
    int plannedStatus = 1;
    double quantity = 1;
};

} // namespace emulator
