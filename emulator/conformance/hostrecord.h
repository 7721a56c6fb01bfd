#pragma once

#include "line/exchange.h"

#include <QList>

namespace emulator {

/// What a host did in one run.
struct HostRecord
{
    /// A command that was met.
    struct Command
    {
        QString protocol;
        QString code;
        QString name;
        int count = 0;
        int refused = 0;
    };
    /// Requests that were refused for one reason.
    struct Refused
    {
        /// The first of them.
        Exchange first;
        int count = 0;
    };
    /// Something that the register takes and a shop will be sorry for.
    struct Warning
    {
        QString kind;
        QString text;
        Exchange at;
    };

    int exchanges = 0;
    int refused = 0;
    /// In the order in which they came.
    QList<Command> commands;
    QList<Refused> refusals;
    QList<Warning> warnings;

    void addCommand(const Exchange& exchange);
    void addRefusal(const Exchange& exchange);
};

} // namespace emulator
