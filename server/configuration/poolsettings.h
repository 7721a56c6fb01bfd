#pragma once

#include "configuration/drainlimit.h"

#include <QString>
#include <QStringList>

namespace frserver {

/// Registers that documents are posted to together; whichever is free makes them.
struct PoolSettings
{
    QString name = {};
    /// Those of this configuration; other services of the rack may have more of them.
    QStringList registers = {};
    /// Of the company, which all of them are registered for; empty when that is not compared.
    QString inn = {};
    /// By their names in receipts: all of the registers have them, and no receipt has another one. Empty when
    /// that does not matter.
    QStringList taxSystems = {};
    /// A register whose drive has less left serves no pool.
    DrainLimit drain = {};
    /// Seconds in which a document is begun that says nothing of it; 0 for any time.
    int startBefore = 120;
};

} // namespace frserver
