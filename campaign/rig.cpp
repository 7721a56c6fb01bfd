#include "rig.h"

#include "hex/protocol.h"
#include "memory/memory.h"
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
    : m_language(language)
    , m_protocol(makeProtocol(language, device, m_outbox, clock))
    , line(language, clock, device, m_outbox, *m_protocol)
{
    device.tape().setListener([](const tape::Page&, quint32) {});
    MockFactory<CurrentTime>::mocked = &m_time;
    line.setPowerCut([this] { cutPower(); });
    buildDriver();
}

Rig::~Rig()
{
    MockFactory<CurrentTime>::mocked = nullptr;
}

void Rig::buildDriver()
{
    PacketIds::reset();
    m_driver.reset();
    m_settings.emplace();
    m_driver = makeDriver(m_language, m_transport, *m_settings, watch);
}

void Rig::start()
{
    line.open();
    m_driver->portOpen();
    m_driver->connect();
    m_driver->init();
}

void Rig::restartHost()
{
    line.reviveHost();
    buildDriver();
}

void Rig::cutPower()
{
    if (!m_folder)
        m_folder.emplace();
    // A register keeps what a request changed before it answers, so that it is the same to keep it now.
    emulator::Memory(std::make_unique<emulator::StateFolder>(m_folder->path())).save(device);
    emulator::Memory(std::make_unique<emulator::StateFolder>(m_folder->path())).load(device);
}
