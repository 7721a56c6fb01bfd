#pragma once

#include "connectionsettings.h"
#include "lineerrors.h"

#include <QObject>

#include <memory>
#include <optional>

class AbstractFrDriver;

namespace devices {

class HeldLine;

/// A register within reach, from the port that is opened to the port that is closed: loads the plugin, takes
/// the port's lock, opens the line, builds the driver and opens its port, and takes all of it back on
/// whatever way it is left. What an exchange that was broken off has left on the line is read away.
///
/// Nothing is sent: that begins with the driver's connect, which sale::CashDesk::open calls.
class RegisterConnection
{
public:
    /// Throws ConnectionError, the driver's exceptions when its port does not open, and what the wait
    /// callback throws.
    explicit RegisterConnection(const ConnectionSettings& settings);
    ~RegisterConnection();
    RegisterConnection(const RegisterConnection&) = delete;
    RegisterConnection& operator=(const RegisterConnection&) = delete;

    AbstractFrDriver& driver() { return *m_driver; }
    /// The plugin's object, which may have more interfaces than that of the driver.
    QObject& deviceObject() { return *m_deviceObject; }
    /// See StreamDevice::soleConnection and sale::RegisterLine::connection.
    quint64 soleConnection() const;
    /// See StreamDevice::repeats and sale::RegisterLine::repeats.
    quint64 repeats() const;
    /// See StreamDevice::lineErrors.
    std::optional<LineErrors> lineErrors() const;
    /// See StreamDevice::setBudget.
    bool isBudgetSpent() const;
    /// Whether anything comes, within so many milliseconds, that nobody has read yet.
    bool hasInput(int milliseconds);
    /// To be called when the last exchange is over: the next program need not wait for an answer to this one.
    void leaveIdle();

private:
    void closePort();

    // The device object works on the line until it is destroyed, so the line is destroyed after it.
    std::unique_ptr<HeldLine> m_line;
    std::unique_ptr<QObject> m_deviceObject;
    AbstractFrDriver* m_driver = nullptr;
};

} // namespace devices
