#pragma once

#include <QString>

namespace emulator {

struct Cashier
{
    QString name;
    QString inn;
};

} // namespace emulator
