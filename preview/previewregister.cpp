#include "previewregister.h"

#include "abstractfrdriver.h"
#include "driverbuilding.h"
#include "driverplugin.h"
#include "exceptions.h"
#include "hex/protocol.h"
#include "receiptissuer.h"
#include "refused.h"
#include "xml/protocol.h"

#include <algorithm>

namespace preview {

namespace {

emulator::Identity identityOf(int width)
{
    emulator::Identity identity;
    identity.width = width;
    return identity;
}

std::unique_ptr<emulator::Protocol> protocolOf(receipt::Protocol protocol, emulator::Register& device,
    emulator::Outbox& outbox, const emulator::Clock& clock)
{
    if (protocol == receipt::Protocol::Hex)
        return std::make_unique<emulator::HexProtocol>(device, outbox, clock);
    return std::make_unique<emulator::XmlProtocol>(device, outbox, clock);
}

/// Its bit.
int taxSystemOf(const receipt::Receipt& receipt)
{
    const auto named = std::find_if(receipt.requisites.begin(), receipt.requisites.end(),
        [](const FdRequisite& requisite) { return requisite.getTag() == EFrDriver::TaxSystem; });
    const int system = named != receipt.requisites.end() ? named->getSourceData().toInt()
                                                         : receipt.document.getTaxSystem();
    return system == hw::fr::common::TaxSystemNone ? int{hw::fr::common::TaxSystemGeneral} : system;
}

} // namespace

PreviewRegister::PreviewRegister(const Settings& settings)
    : m_settings(settings)
    , m_clock(settings.time)
    , m_time(m_clock)
    , m_device(m_clock, identityOf(settings.width))
    , m_outbox(m_clock)
    , m_protocol(protocolOf(settings.protocol, m_device, m_outbox, m_clock))
    , m_line(m_clock, m_outbox, *m_protocol)
    , m_deviceObject(devices::createDeviceObject(devices::findDriverPlugin(settings.connection.plugins)))
    , m_driver(&devices::buildDriver(*m_deviceObject, m_line, settings.connection))
{
    m_line.open();
}

PreviewRegister::~PreviewRegister()
{
    m_driver->portClose();
}

tape::Page PreviewRegister::issued(const receipt::Receipt& receipt)
{
    try {
        start(receipt);
        sell(receipt);
    } catch (const BasicException& failure) {
        throw Refused(failure.tr().ru() + reason());
    }
    return printed();
}

void PreviewRegister::start(const receipt::Receipt& receipt)
{
    m_driver->portOpen();
    m_driver->connect();
    m_driver->init();
    emulator::Registration registration = m_device.state().registration;
    registration.taxSystems = taxSystemOf(receipt);
    // One that cannot be is refused with the receipt.
    static_cast<void>(m_device.reports().changeRegistration(
        registration, {receipt.cashier->name, receipt.cashier->inn}, 0));
    m_driver->cashierLogin(*receipt.cashier);
    m_driver->openShift();
    // Nobody asked for what was printed so far.
    m_device.tape().clear();
}

void PreviewRegister::sell(receipt::Receipt receipt)
{
    // One that goes to the customer by mail only is to be seen, too.
    receipt.document.setPrintMode(CheckPrintNormal);
    sale::IssueOptions options;
    options.line = {m_settings.protocol};
    // This register knows nothing of the codes.
    options.markPolicy = sale::MarkPolicy::Any;
    const sale::IssueResult result = sale::issueReceipt(*m_driver, receipt, options);
    if (result.failure)
        std::rethrow_exception(result.failure->exception);
}

QString PreviewRegister::reason()
{
    const QList<emulator::RefusedRequest>& refused = m_device.refusals().all();
    return refused.isEmpty() ? QString()
                             : QStringLiteral(" (%1)").arg(refused.constLast().reason.simplified());
}

tape::Page PreviewRegister::printed()
{
    tape::Page all;
    for (const tape::Page& page : m_device.tape().pages()) {
        all.width = page.width;
        all.lines += page.lines;
    }
    return all;
}

} // namespace preview
