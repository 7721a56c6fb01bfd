#pragma once

#include "register/clock.h"

#include <QDateTime>

namespace emulator {

class SystemClock : public Clock
{
public:
    qint64 milliseconds() const override { return QDateTime::currentMSecsSinceEpoch(); }
};

} // namespace emulator
