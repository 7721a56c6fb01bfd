#pragma once

#include <QByteArray>

namespace emulator {

/// A document as a row of a state: each column is JSON.
struct DocumentRow
{
    quint32 number = 0;
    QByteArray record;
    QByteArray entry;
    QByteArray page;
};

} // namespace emulator
