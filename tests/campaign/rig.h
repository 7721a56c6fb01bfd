#pragma once

#include "currenttime.h"
#include "faultyline.h"
#include "frspfsettings.h"
#include "mockfactory.h"
#include "serialdriverwrapper.h"

#include <memory>

class AbstractFrDriver;

/// The host's clock, which is the register's.
class HostTime : public CurrentTime
{
public:
    explicit HostTime(const emulator::Clock& clock)
        : m_clock(clock)
    {
    }
    QDateTime getCurrentDateTime() const override
    {
        return QDateTime::fromMSecsSinceEpoch(m_clock.milliseconds());
    }

private:
    const emulator::Clock& m_clock;
};

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
    HostTime m_time{clock};
    std::unique_ptr<AbstractFrDriver> m_driver;
};
