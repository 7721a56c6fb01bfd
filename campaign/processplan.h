#pragma once

#include <QString>

/// How often real programs lose their power or their life in a campaign.
struct ProcessPlan
{
    int count = 0;
    /// Of the moments.
    quint64 seed = 1;
    QString emulator;
    QString frctl;
    QString plugin;
};
