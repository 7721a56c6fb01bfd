#pragma once

#include "emulatedline.h"
#include "options.h"
#include "receipt.h"
#include "register/register.h"
#include "tape/page.h"
#include "virtualtime.h"

#include <memory>

class AbstractFrDriver;

namespace frctl {

/// A software register in this process with the plugin's driver on it, for one receipt. It is registered with
/// the receipt's tax system alone, or the general one.
class PreviewRegister
{
public:
    /// The width is that of the paper in characters. Throws HostError.
    PreviewRegister(const Options& options, int width);
    ~PreviewRegister();
    PreviewRegister(const PreviewRegister&) = delete;
    PreviewRegister& operator=(const PreviewRegister&) = delete;

    /// Issues the receipt, which has a cashier: what was printed of it. Throws CheckError for what the
    /// register refuses.
    tape::Page issued(const receipt::Receipt& receipt);

private:
    void start(const receipt::Receipt& receipt);
    void sell(receipt::Receipt receipt);
    QString refusal(const QString& text);
    tape::Page printed();

    const Options m_options;
    emulator::VirtualClock m_clock;
    VirtualTime m_time;
    emulator::Register m_device;
    emulator::Outbox m_outbox;
    std::unique_ptr<emulator::Protocol> m_protocol;
    EmulatedLine m_line;
    std::unique_ptr<QObject> m_deviceObject;
    AbstractFrDriver* m_driver;
};

} // namespace frctl
