#pragma once

#include "connectionsettings.h"
#include "emulatedline.h"
#include "protocol.h"
#include "receipt.h"
#include "register/register.h"
#include "tape/page.h"
#include "virtualtime.h"

#include <memory>

class AbstractFrDriver;

namespace preview {

/// A software register in this process with the plugin's driver on it, for one receipt. It is registered with
/// the receipt's tax system alone, or the general one.
class PreviewRegister
{
public:
    struct Settings
    {
        /// Its port is not used.
        devices::ConnectionSettings connection;
        receipt::Protocol protocol = receipt::Protocol::Xml;
        /// Of the paper in characters.
        int width = 44;
        /// When the receipt is issued.
        QDateTime time = QDateTime::currentDateTime();
    };

    /// Throws devices::ConnectionError.
    explicit PreviewRegister(const Settings& settings);
    ~PreviewRegister();
    PreviewRegister(const PreviewRegister&) = delete;
    PreviewRegister& operator=(const PreviewRegister&) = delete;

    /// Issues the receipt, which has a cashier: what was printed of it. Throws Refused.
    tape::Page issued(const receipt::Receipt& receipt);

private:
    void start(const receipt::Receipt& receipt);
    void sell(receipt::Receipt receipt);
    QString reason();
    tape::Page printed();

    const Settings m_settings;
    emulator::VirtualClock m_clock;
    VirtualTime m_time;
    emulator::Register m_device;
    emulator::Outbox m_outbox;
    std::unique_ptr<emulator::Protocol> m_protocol;
    EmulatedLine m_line;
    std::unique_ptr<QObject> m_deviceObject;
    AbstractFrDriver* m_driver;
};

} // namespace preview
