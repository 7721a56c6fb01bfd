#pragma once

#include "line/fault.h"

#include <QString>

#include <optional>
#include <utility>

namespace emulator {

/// Which exchanges suffer a fault.
struct FaultRule
{
    Fault fault;
    /// As it was written.
    QString mode;
    /// Code or name of the command; empty for any.
    QString command;
    /// Requests alone that store a document in the fiscal drive.
    bool isForStoring = false;
    /// A field and its value that the request must have.
    std::optional<std::pair<QString, QString>> field;
    /// That one alone of the exchanges that fit, counted from 1.
    std::optional<int> nth;
    /// Each so-many-th of those that fit; all of them without either.
    std::optional<int> each;
    /// Of those that would be hit.
    double probability = 1;
    quint64 seed = 1;
    /// Exchanges of any kind that the rule is in force for; no value for all.
    std::optional<int> lifetime;
};

} // namespace emulator
