#pragma once

#include "options.h"
#include "portlock.h"
#include "settledsale.h"
#include "task.h"

#include <QObject>

#include <memory>

class AbstractFrDriver;

namespace hw {
class AbstractRegisterParameters;
}

namespace devices {
class StreamDevice;
}

namespace frctl {

/// The register at work, from the open port to the closed one: loads the plugin, opens the line, builds the
/// driver, opens its port, and closes everything again on whatever way it is left.
class RegisterSession
{
public:
    /// Throws HostError for the host's own side, the driver's exceptions otherwise.
    explicit RegisterSession(const Options& options);
    ~RegisterSession();
    RegisterSession(const RegisterSession&) = delete;
    RegisterSession& operator=(const RegisterSession&) = delete;

    /// Reaches the register. Sales of earlier runs that were broken off are settled before init cleans up the
    /// document that they left open; without init it stays as it is. A task that makes a document does
    /// nothing without the journal.
    void connect(const Task& task, const FrUser& cashier);
    /// Those that were settled.
    const QList<sale::SettledSale>& settledSales() const { return m_settledSales; }
    /// To be called when the last exchange is over: the next program need not wait for an answer to this one.
    void leaveIdle() { m_isIdle = true; }
    AbstractFrDriver& driver() { return *m_driver; }
    /// Throws HostError where the plugin tells no parameters.
    hw::AbstractRegisterParameters& parameters() const;

private:
    void lockPort(const Options& options);
    void openLine(const Options& options);
    void buildDriver(const Options& options);
    void settleSales(bool isJournalNeeded);
    void closePort();
    /// What an exchange that was broken off has left on the line.
    void dropLeftovers();
    void setProperty(const char* name, const QVariant& value);

    // Held until the line is closed.
    devices::PortLock m_lock;
    // The device object works on the line until it is destroyed, so the line is destroyed after it.
    std::unique_ptr<devices::StreamDevice> m_line;
    std::unique_ptr<QObject> m_deviceObject;
    AbstractFrDriver* m_driver = nullptr;
    bool m_isIdle = false;
    const Options m_options;
    QList<sale::SettledSale> m_settledSales;
};

} // namespace frctl
