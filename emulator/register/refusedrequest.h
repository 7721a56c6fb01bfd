#pragma once

#include <QByteArray>
#include <QString>

namespace emulator {

/// A request that the register did not take.
struct RefusedRequest
{
    /// Its bytes as they came.
    QByteArray request;
    /// The code of its command, or nothing where it could not be read.
    QString command;
    /// The error that the host was answered, in the way of the protocol: "category.code", or a code alone.
    QString error;
    /// In words for whoever writes the host.
    QString reason;
};

} // namespace emulator
