#pragma once

#include <QString>

/// A picture for printing: the slot in the device's memory, or a file to load.
struct Logo
{
    int number = 0;
    QString fileName;
};
