#include "rig.h"

#include "hexprotocol.h"
#include "spfhex/command.h"
#include "spfhex/frspf.h"

namespace {

/// The packet ids go on from driver to driver; a run that is repeated in part needs them from the start.
class PacketIds : public spfhex::Command
{
public:
    static void reset() { commandId = 0x1F; }
};

} // namespace

Rig::Rig(Protocol language)
    : m_protocol(std::make_unique<emulator::HexProtocol>(device, m_outbox, clock))
    , line(language, clock, device, m_outbox, *m_protocol)
{
    device.tape().setListener([](const QStringList&) {});
    PacketIds::reset();
    m_driver = std::make_unique<spfhex::FrSpf>(&m_transport, &m_settings);
}

Rig::~Rig() = default;
