#pragma once

#include "register/drivememory.h"
#include "register/state.h"

#include <QMap>

#include <utility>

namespace emulator {

/// What a register keeps over a power cut, beside the documents of its fiscal drive.
struct RegisterMemory
{
    /// Milliseconds by which its clock is ahead of the one that it was given.
    qint64 clockOffset = 0;
    /// The numbered settings by number and row.
    QMap<std::pair<int, int>, QString> parameters;
    /// Those that have names.
    QMap<QString, QString> settings;
    DriveMemory drive;
    /// A host's start and whether the OFD can be reached are not kept.
    State state;
};

} // namespace emulator
