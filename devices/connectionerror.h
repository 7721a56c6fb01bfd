#pragma once

#include <QString>

#include <stdexcept>

namespace devices {

/// The host's own side failed before the register was asked for anything. The text says what.
class ConnectionError : public std::runtime_error
{
public:
    enum Reason {
        /// There is no plugin, or not the right one.
        NoPlugin,
        /// The port is not there, or cannot be locked or opened.
        NoPort,
        /// Another program works the port.
        Busy,
        /// This user may not open the port.
        NoAccess
    };

    ConnectionError(Reason reason, const QString& text)
        : std::runtime_error(text.toStdString())
        , m_reason(reason)
    {
    }

    Reason reason() const { return m_reason; }

private:
    Reason m_reason;
};

} // namespace devices
