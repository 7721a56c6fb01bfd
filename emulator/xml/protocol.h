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
    /// Takes no request any more, and tells why.
    void refuseAll(const QString& reason) { m_refusal = reason; }

protected:
    Language language() const override { return Language::Xml; }
    void forgetRequest() override;
    QByteArray foreignAnswer(const QByteArray& answer) const override;
    QByteArray damagedAnswer(const QByteArray& answer) const override;
    QByteArray noise() const override;
    QByteArray shaped(const QByteArray& answer, FaultMode mode) const override;
    qint64 pauseAfterForeign() const override;

private:
    void handle(const QByteArray& document);
    XmlVerdict read(const QByteArray& document, XmlRequest& request) const;
    void reply(
        const QByteArray& document, const XmlRequest& request, const XmlAnswer& answer, const Fault& fault);
    XmlAnswer run(const XmlRequest& request);
    Exchange exchangeOf(const QByteArray& document, const XmlRequest& request, const XmlVerdict& verdict);
    /// Drops what stands before the request.
    void skip();

    XmlSettings m_settings;
    QString m_refusal;
    QByteArray m_buffer;
    /// The last bytes before the request, as many as a byte order mark has.
    QByteArray m_skipped;
    qint64 m_lastByteAt = 0;
};

} // namespace emulator
