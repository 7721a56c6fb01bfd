#pragma once

#include "faultyline.h"
#include "frspfsettings.h"
#include "serialdriverwrapper.h"

#include <memory>

class AbstractFrDriver;

/// A driver, a line and a register, all new.
class Rig
{
public:
    explicit Rig(Protocol language);
    ~Rig();
    Rig(const Rig&) = delete;
    Rig& operator=(const Rig&) = delete;

    AbstractFrDriver& driver() { return *m_driver; }

    emulator::VirtualClock clock;
    emulator::Register device{clock};

private:
    emulator::Outbox m_outbox{clock};
    std::unique_ptr<emulator::Protocol> m_protocol;

public:
    FaultyLine line;

private:
    SerialDriverWrapper m_transport{&line};
    FrSpfSettings m_settings;
    std::unique_ptr<AbstractFrDriver> m_driver;
};
