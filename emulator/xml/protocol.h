#pragma once

#include "line/protocol.h"
#include "xml/envelope.h"
#include "xml/print.h"
#include "xml/rule.h"
#include "xml/settings.h"

namespace emulator {

/// The document protocol: one "ArmRequest" in, one "ArmResponse" with its id out.
class XmlProtocol : public Protocol
{
public:
    XmlProtocol(Register& device, Outbox& outbox, const Clock& clock);

    void receive(const QByteArray& bytes) override;
    bool isIdle() const override;

protected:
    QByteArray foreignAnswer(const QByteArray& answer) const override;
    QByteArray damagedAnswer(const QByteArray& answer) const override;
    QByteArray noise() const override;
    qint64 pauseAfterForeign() const override;

private:
    using Handler = XmlAnswer (XmlProtocol::*)(const XmlNode& data);
    struct Command
    {
        int code;
        Handler handler;
        /// None for a command without parameters.
        std::optional<XmlRule> rule;
    };
    static const QList<Command>& commands();

    void handle(const QByteArray& document);
    XmlAnswer run(const XmlRequest& request);

    XmlAnswer state(const XmlNode& data);
    XmlAnswer information(const XmlNode& data);
    XmlAnswer shiftState(const XmlNode& data);
    XmlAnswer drawerState(const XmlNode& data);
    XmlAnswer time(const XmlNode& data);
    XmlAnswer taxSystems(const XmlNode& data);
    XmlAnswer counters(const XmlNode& data);

    XmlAnswer openShift(const XmlNode& data);
    XmlAnswer closeShift(const XmlNode& data);
    XmlAnswer printTotals(const XmlNode& data);
    XmlAnswer printAccounting(const XmlNode& data);
    XmlAnswer printStored(const XmlNode& data);
    XmlAnswer printLast(const XmlNode& data);
    XmlAnswer changeRegistration(const XmlNode& data);
    XmlAnswer setTime(const XmlNode& data);
    XmlAnswer openDrawer(const XmlNode& data);
    XmlAnswer settings(const XmlNode& data);
    XmlAnswer setSettings(const XmlNode& data);
    XmlAnswer checkMarking(const XmlNode& data);
    XmlAnswer clearMarking(const XmlNode& data);

    XmlAnswer receipt(const XmlNode& data);
    XmlAnswer moneyDocument(const XmlNode& data);
    XmlAnswer textDocument(const XmlNode& data);
    Refusal print(const QList<PrintPiece>& pieces);

    XmlSettings m_settings;
    QByteArray m_buffer;
    qint64 m_lastByteAt = 0;
};

} // namespace emulator
