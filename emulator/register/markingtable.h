#pragma once

#include <QByteArray>
#include <QMap>

namespace emulator {

/// Marking codes that were checked and have not been sold yet.
struct MarkingTable
{
    /// The results of their checks, the bits of tag 2106.
    QMap<QByteArray, int> results;
    /// Notifications about sold marked goods that wait for the state's system.
    int notifications = 0;

    /// Takes a code that was sold out of the table; any other is left alone.
    void sell(const QByteArray& code) { notifications += results.remove(code) > 0 ? 1 : 0; }
};

} // namespace emulator
