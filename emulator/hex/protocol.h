#pragma once

#include "hex/fields.h"
#include "hex/framer.h"
#include "line/protocol.h"

namespace emulator {

/// The framed protocol: STX, password, packet id, command code, fields, ETX and check value.
class HexProtocol : public Protocol
{
public:
    HexProtocol(Register& device, Outbox& outbox, const Clock& clock);

    void receive(const QByteArray& bytes) override;
    bool isIdle() const override { return m_framer.isIdle(milliseconds()); }

    struct Answer
    {
        Refusal refusal = Refusal::None;
        QList<QByteArray> fields;

        Answer(Refusal verdict)
            : refusal(verdict)
        {
        }
        Answer(const QList<QByteArray>& values)
            : fields(values)
        {
        }
    };

protected:
    QByteArray foreignAnswer(const QByteArray& answer) const override;
    QByteArray damagedAnswer(const QByteArray& answer) const override;
    QByteArray noise() const override;

private:
    using Handler = Answer (HexProtocol::*)(HexFields& fields);
    struct Command
    {
        int code;
        Handler handler;
        /// Fewer fields are a bad value.
        int fields;
        /// The register must have been started.
        bool started;
    };
    static const QList<Command>& commands();

    void handleFrame(const QByteArray& frame);
    void handleBlock(const QByteArray& block);
    void handleEnquiry();
    Answer judge(const QByteArray& frame);
    Answer run(const QByteArray& code, HexFields& fields);

    Answer start(HexFields& fields);
    Answer changeRegistration(HexFields& fields);
    Answer openDocument(HexFields& fields);
    Answer printText(HexFields& fields);
    Answer finishDocument(HexFields& fields);
    Answer cancelDocument(HexFields& fields);
    Answer printBarcode(HexFields& fields);
    Answer printQrCode(HexFields& fields);
    Answer addItem(HexFields& fields);
    Answer subtotal(HexFields& fields);
    Answer pay(HexFields& fields);
    Answer setMoney(HexFields& fields);
    Answer bindAgent(HexFields& fields);
    Answer checkMarking(HexFields& fields);
    Answer clearMarking(HexFields& fields);
    Answer bindMarking(HexFields& fields);
    Answer printTotals(HexFields& fields);
    Answer closeShift(HexFields& fields);
    Answer printStored(HexFields& fields);
    Answer printAccounting(HexFields& fields);
    Answer openShift(HexFields& fields);
    Answer openDrawer(HexFields& fields);
    Answer state(HexFields& fields);
    Answer parameter(HexFields& fields);
    Answer setParameter(HexFields& fields);
    Answer setTime(HexFields& fields);
    Answer driveData(HexFields& fields);
    Answer deviceData(HexFields& fields);
    Answer serialNumber(HexFields& fields);
    Answer time(HexFields& fields);
    Answer drawerState(HexFields& fields);
    Answer registrationData(HexFields& fields);
    Answer setLogo(HexFields& fields);
    Answer clearLogo(HexFields& fields);

    QList<QByteArray> driveState() const;
    QList<QByteArray> documentCounts() const;
    QList<QByteArray> documentSums() const;

    HexFramer m_framer;
    /// The request and the fault of the command whose raw block is awaited.
    QByteArray m_blockRequest;
    Fault m_blockFault;
};

} // namespace emulator
