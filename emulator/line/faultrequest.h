#pragma once

#include <QList>
#include <QString>

#include <utility>

namespace emulator {

/// What a rule may look at in a request.
struct FaultRequest
{
    QString command;
    QString name;
    /// Names, over XML paths, and values.
    QList<std::pair<QString, QString>> fields;
    /// A register that takes it stores a document in its fiscal drive.
    bool isStoring = false;
};

} // namespace emulator
