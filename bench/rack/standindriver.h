#pragma once

#include "memoryline.h"

#include "frspfsettings.h"
#include "spfhex/frspf.h"

#include <chrono>

/// What the driver works with, and so stands before it.
struct StandInLine
{
    /// Registers of different names have different drives.
    explicit StandInLine(const QString& name);

    MemoryLine line;
    FrSpfSettings ownSettings;
};

/// The HEX driver on a register in its own memory that takes its time for a receipt, as a printer does, and
/// no processor meanwhile.
class StandInDriver : private StandInLine, public spfhex::FrSpf
{
public:
    explicit StandInDriver(const QString& name);

    void checkOpen(const FiscalDocument& document) override;
    /// The drive has the receipt when its time is over.
    QJsonObject checkClose(const FiscalDocument& document) override;

private:
    std::chrono::steady_clock::time_point m_opened;
};
