#pragma once

#include "hex/answer.h"
#include "hex/fields.h"
#include "hex/framer.h"
#include "line/protocol.h"

#include <optional>

namespace emulator {

/// The framed protocol: STX, password, packet id, command code, fields, ETX and check value.
class HexProtocol : public Protocol
{
public:
    HexProtocol(Register& device, Outbox& outbox, const Clock& clock);

    void receive(const QByteArray& bytes) override;
    bool isIdle() const override { return m_framer.isIdle(milliseconds()); }

protected:
    Language language() const override { return Language::Hex; }
    void forgetRequest() override { m_framer = HexFramer(); }
    QByteArray foreignAnswer(const QByteArray& answer) const override;
    QByteArray damagedAnswer(const QByteArray& answer) const override;
    QByteArray noise() const override;
    QByteArray shaped(const QByteArray& answer, FaultMode mode) const override;

private:
    void handleFrame(const QByteArray& frame);
    void handleBlock(const QByteArray& block);
    void handleEnquiry();
    void reply(const QByteArray& frame, const HexAnswer& answer, const Fault& fault);
    Exchange exchangeOf(const QByteArray& frame, const HexAnswer& answer) const;
    HexAnswer judge(const QByteArray& frame);
    /// Two hexadecimal digits; no value for anything else.
    std::optional<int> readByte(const QByteArray& digits) const;
    HexAnswer run(const QByteArray& code, HexFields& fields);

    HexFramer m_framer;
    /// The request and the fault of the command whose raw block is awaited.
    QByteArray m_blockRequest;
    Fault m_blockFault;
};

} // namespace emulator
