#include "rig.h"

#include "hex/protocol.h"
#include "mockfactory.h"
#include "spfhex/command.h"
#include "spfhex/frspf.h"
#include "spfxml/frspf.h"
#include "watcheddriver.h"
#include "xml/protocol.h"

namespace {

/// The packet ids go on from driver to driver; a run that is repeated in part needs them from the start.
class PacketIds : public spfhex::Command
{
public:
    static void reset() { commandId = 0x1F; }
};

std::unique_ptr<emulator::Protocol> makeProtocol(
    Protocol language, emulator::Register& device, emulator::Outbox& outbox, const emulator::Clock& clock)
{
    if (language == Protocol::Xml)
        return std::make_unique<emulator::XmlProtocol>(device, outbox, clock);
    return std::make_unique<emulator::HexProtocol>(device, outbox, clock);
}

std::unique_ptr<AbstractFrDriver> makeDriver(
    Protocol language, AbstractSerialDriver& transport, FrSpfSettings& settings, const CallWatch& watch)
{
    if (language == Protocol::Xml)
        return std::make_unique<WatchedDriver<spfxml::FrSpf>>(&transport, &settings, watch);
    return std::make_unique<WatchedDriver<spfhex::FrSpf>>(&transport, &settings, watch);
}

} // namespace

Rig::Rig(Protocol language)
    : m_protocol(makeProtocol(language, device, m_outbox, clock))
    , line(language, clock, device, m_outbox, *m_protocol)
{
    device.tape().setListener([](const tape::Page&) {});
    PacketIds::reset();
    MockFactory<CurrentTime>::mocked = &m_time;
    m_driver = makeDriver(language, m_transport, m_settings, watch);
}

Rig::~Rig()
{
    MockFactory<CurrentTime>::mocked = nullptr;
}
