#include "hex/protocol.h"

#include <algorithm>

namespace emulator {

namespace {

const QByteArray password = QByteArrayLiteral("QZXW");
constexpr qsizetype idOffset = 5;
constexpr qsizetype codeOffset = 6;
constexpr qsizetype fieldsOffset = 8;
constexpr qsizetype shortestFrame = 11;
constexpr int setLogoCode = 0xE2;

} // namespace

HexProtocol::HexProtocol(Register& device, Outbox& outbox, const Clock& clock)
    : Protocol(device, outbox, clock)
{
}

void HexProtocol::receive(const QByteArray& bytes)
{
    // Byte by byte: a command may tell that a raw block follows in the same piece.
    for (const char byte : bytes) {
        for (const HexFramer::Event& event : m_framer.feed(QByteArray(1, byte), milliseconds())) {
            switch (event.kind) {
            case HexFramer::Kind::Frame:
                handleFrame(event.bytes);
                break;
            case HexFramer::Kind::Block:
                handleBlock(event.bytes);
                break;
            case HexFramer::Kind::Enquiry:
                handleEnquiry();
                break;
            }
        }
    }
}

void HexProtocol::handleEnquiry()
{
    // An idle register is as much alive as a busy one.
    if (!isDeaf())
        outbox().putFirst(QByteArray(1, HexFramer::acknowledge));
}

void HexProtocol::handleFrame(const QByteArray& frame)
{
    if (frame.size() < shortestFrame)
        return;
    const Fault fault = beginExchange();
    if (fault.mode == FaultMode::Silence)
        return;
    const Answer answer = judge(frame);
    const QByteArray code = frame.mid(codeOffset, 2);
    if (code.toInt(nullptr, 16) == setLogoCode && answer.refusal == Refusal::None) {
        // The register is ready for the picture; the answer comes when it has it.
        m_blockRequest = frame;
        m_blockFault = fault;
        outbox().put(QByteArray(1, HexFramer::acknowledge));
        return;
    }
    const QByteArray bytes
        = HexFramer::answer(frame.at(idOffset), code, static_cast<int>(answer.refusal), answer.fields);
    deliver(frame, bytes, fault);
}

void HexProtocol::handleBlock(const QByteArray& block)
{
    const Refusal refusal = device().setLogo(block.mid(1));
    const QByteArray bytes = HexFramer::answer(
        m_blockRequest.at(idOffset), m_blockRequest.mid(codeOffset, 2), static_cast<int>(refusal), {});
    deliver(m_blockRequest, bytes, m_blockFault);
}

HexProtocol::Answer HexProtocol::judge(const QByteArray& frame)
{
    const qsizetype end = frame.size() - 2;
    bool ok = false;
    const int check = frame.mid(end).toInt(&ok, 16);
    if (!ok || check != HexFramer::checkValue(frame.mid(1, end - 1)))
        return Refusal::BadCheckValue;
    if (frame.mid(1, password.size()) != password)
        return Refusal::BadPassword;
    const QByteArray body = frame.mid(fieldsOffset, end - 1 - fieldsOffset);
    QList<QByteArray> list = body.split(HexFramer::separator);
    // Every field is ended by a separator, so what stands behind the last one must be nothing.
    if (!list.takeLast().isEmpty())
        return Refusal::BadValue;
    HexFields fields(list);
    return run(frame.mid(codeOffset, 2), fields);
}

HexProtocol::Answer HexProtocol::run(const QByteArray& code, HexFields& fields)
{
    bool ok = false;
    const int number = code.toInt(&ok, 16);
    const auto found = std::find_if(commands().cbegin(), commands().cend(),
        [number](const Command& command) { return command.code == number; });
    if (!ok || found == commands().cend())
        return Refusal::UnknownFunction;
    if (found->started && !device().isStarted())
        return Refusal::WrongState;
    if (fields.count() < found->fields)
        return Refusal::BadValue;
    return (this->*found->handler)(fields);
}

QByteArray HexProtocol::foreignAnswer(const QByteArray& answer) const
{
    const char earlier = answer.at(1) == 0x20 ? '\x7E' : static_cast<char>(answer.at(1) - 1);
    return HexFramer::answer(earlier, answer.mid(2, 2), 0, {});
}

QByteArray HexProtocol::damagedAnswer(const QByteArray& answer) const
{
    const quint8 wrong = HexFramer::checkValue(answer.mid(1, answer.size() - 3)) ^ 0x55;
    return answer.left(answer.size() - 2) + HexFramer::twoDigits(wrong);
}

QByteArray HexProtocol::noise() const
{
    return QByteArrayLiteral("\xFF\x7F\x00U\xAA");
}

// clang-format off
const QList<HexProtocol::Command>& HexProtocol::commands()
{
    static const QList<Command> list{
        {0x00, &HexProtocol::start, 2, false},
        {0x08, &HexProtocol::changeRegistration, 18, true},
        {0x20, &HexProtocol::openDocument, 10, true},
        {0x21, &HexProtocol::printText, 2, true},
        {0x22, &HexProtocol::finishDocument, 3, true},
        {0x23, &HexProtocol::cancelDocument, 0, true},
        {0x24, &HexProtocol::printBarcode, 5, true},
        {0x29, &HexProtocol::printQrCode, 3, true},
        {0x30, &HexProtocol::addItem, 23, true},
        {0x34, &HexProtocol::subtotal, 0, true},
        {0x35, &HexProtocol::pay, 2, true},
        {0x36, &HexProtocol::setMoney, 2, true},
        {0x3C, &HexProtocol::bindAgent, 11, true},
        {0x3D, &HexProtocol::checkMarking, 10, true},
        {0x3F, &HexProtocol::clearMarking, 0, true},
        {0x41, &HexProtocol::bindMarking, 4, true},
        {0x60, &HexProtocol::printTotals, 1, true},
        {0x61, &HexProtocol::closeShift, 2, true},
        {0x65, &HexProtocol::printStored, 1, true},
        {0x6A, &HexProtocol::printAccounting, 1, true},
        {0x6B, &HexProtocol::openShift, 2, true},
        {0x80, &HexProtocol::openDrawer, 0, true},
        {0xA0, &HexProtocol::state, 0, false},
        {0xA1, &HexProtocol::parameter, 2, false},
        {0xA2, &HexProtocol::setParameter, 3, true},
        {0xA3, &HexProtocol::setTime, 2, false},
        {0xA4, &HexProtocol::driveData, 0, false},
        {0xA5, &HexProtocol::deviceData, 1, false},
        {0xA6, &HexProtocol::serialNumber, 0, false},
        {0xA7, &HexProtocol::time, 0, false},
        {0xA8, &HexProtocol::drawerState, 0, false},
        {0xC0, &HexProtocol::registrationData, 0, false},
        {setLogoCode, &HexProtocol::setLogo, 1, true},
        {0xE3, &HexProtocol::clearLogo, 0, true},
    };
    return list;
}
// clang-format on

} // namespace emulator
