#pragma once

#include "line/protocol.h"
#include "xml/answer.h"
#include "xml/settings.h"

namespace emulator {

struct XmlRequest;

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
    void handle(const QByteArray& document);
    XmlAnswer run(const XmlRequest& request);

    XmlSettings m_settings;
    QByteArray m_buffer;
    qint64 m_lastByteAt = 0;
};

} // namespace emulator
