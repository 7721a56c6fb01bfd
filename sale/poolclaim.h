#pragma once

#include <QString>
#include <QStringList>

namespace sale {

/// What a register would make of what waits in pools.
struct PoolClaim
{
    /// Whose document it becomes.
    QString registerName;
    /// Those that it serves.
    QStringList pools;
    /// It has no paper: only what needs none.
    bool isPaperless = false;
    /// Whatever waits but these, which are few.
    QStringList except = {};
    /// That one alone; empty for the one that was accepted first.
    QString id = {};
};

} // namespace sale
