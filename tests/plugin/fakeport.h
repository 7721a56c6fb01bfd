#pragma once

#include "driver/mockserialdevice.h"

#include <QObject>

/// A host's serial device that answers false to everything.
class FakePort : public QObject, public testing::NiceMock<MockSerialDevice>
{
    Q_OBJECT
    Q_INTERFACES(hw::AbstractSerialDevice)
};
