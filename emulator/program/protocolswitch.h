#pragma once

#include "hex/protocol.h"
#include "xml/protocol.h"

namespace emulator {

enum class ProtocolChoice { Auto, Hex, Xml };

/// Both protocols on one line: what a host begins with tells which one it speaks.
class ProtocolSwitch
{
public:
    ProtocolSwitch(
        Register& device, Outbox& outbox, const Clock& clock, ProtocolChoice choice = ProtocolChoice::Auto);

    void receive(const QByteArray& bytes);
    void setLenient(bool lenient);
    /// Exchanges are counted for each protocol by itself.
    void setFaults(const FaultPlan& plan);
    void setFaultSource(FaultSource* source);
    /// Told of a fault that is none of the protocol that met it.
    void setMisfitListener(const std::function<void(const QString& words)>& listener);
    /// Nothing has come of a request any more.
    void forget();
    void setWatcher(const Protocol::Watcher& watcher);

private:
    void chooseFor(const QByteArray& bytes);
    void change(Protocol& protocol);

    HexProtocol m_hex;
    XmlProtocol m_xml;
    ProtocolChoice m_choice;
    Protocol* m_current;
    /// The last bytes that belong to neither protocol, as many as may stand before a document.
    QByteArray m_undecided;
};

} // namespace emulator
