#pragma once

#include "callwatch.h"
#include "faultyline.h"
#include "frspfsettings.h"
#include "hosttime.h"
#include "serialdriverwrapper.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>

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
    /// The register's side of the line.
    emulator::Protocol& protocol() { return *m_protocol; }

    /// Opens the port, finds the register and starts it.
    void start();
    /// The host's program is started anew: a driver that knows nothing yet, and a port that is closed.
    void restartHost();

    /// Sees the calls of the driver from outside; none at first.
    CallWatch watch;
    emulator::VirtualClock clock;
    emulator::Register device{clock};

private:
    void buildDriver();
    /// The register is as it was kept in a folder; what it had to say is lost.
    void cutPower();

    const Protocol m_language;
    std::optional<QTemporaryDir> m_folder;
    emulator::Outbox m_outbox{clock};
    std::unique_ptr<emulator::Protocol> m_protocol;

public:
    FaultyLine line;

private:
    SerialDriverWrapper m_transport{&line};
    std::optional<FrSpfSettings> m_settings;
    HostTime m_time{clock};
    std::unique_ptr<AbstractFrDriver> m_driver;
};
