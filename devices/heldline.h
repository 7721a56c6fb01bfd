#pragma once

#include "connectionsettings.h"
#include "portlock.h"

#include <memory>

namespace devices {

class StreamDevice;

/// A line that this program alone works: the port's lock is taken before it is opened, and given back after
/// it is closed.
class HeldLine
{
public:
    /// Waits for the port as the settings say. Throws ConnectionError, and what the wait callback throws.
    explicit HeldLine(const ConnectionSettings& settings);
    ~HeldLine();
    HeldLine(const HeldLine&) = delete;
    HeldLine& operator=(const HeldLine&) = delete;

    StreamDevice& device() { return *m_device; }
    /// Reads away what an exchange that was broken off has left on the line. To be called when it is set up.
    void dropLeftovers();
    /// From now on nothing is thrown any more.
    void endWaits();
    /// To be called when the last exchange is over: the next program need not wait for an answer to this one.
    void leaveIdle() { m_isIdle = true; }

private:
    void lockPort(const ConnectionSettings& settings);
    void open(const ConnectionSettings& settings);

    // Held until the line is closed.
    PortLock m_lock;
    std::unique_ptr<StreamDevice> m_device;
    bool m_isIdle = false;
};

} // namespace devices
