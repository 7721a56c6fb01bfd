#include "hex/protocol.h"

#include "hex/answershape.h"
#include "hex/commandtable.h"
#include "register/codepage.h"
#include "register/parametertable.h"
#include "register/refusalwords.h"

namespace emulator {

namespace {

constexpr qsizetype passwordOffset = 1;
constexpr qsizetype passwordSize = 4;
constexpr qsizetype idOffset = 5;
constexpr qsizetype codeOffset = 6;
constexpr qsizetype fieldsOffset = 8;
constexpr qsizetype shortestFrame = 11;
constexpr uchar lowestId = 0x20;
constexpr uchar highestId = 0xFD;

// As much of a field as a reader of a reason needs.
QString shownText(const QByteArray& field)
{
    constexpr qsizetype longestShown = 64;
    const QString text = codepage::toText(field.left(longestShown));
    return field.size() <= longestShown ? text
                                        : QStringLiteral("%1... (%2 bytes)").arg(text).arg(field.size());
}

QString shownFields(const HexFields& fields)
{
    QStringList shown;
    for (qsizetype index = 0; index < fields.count(); ++index)
        shown.append(QStringLiteral("\"%1\"").arg(shownText(fields.raw(index))));
    return shown.join(QStringLiteral(", "));
}

QByteArray answerTo(const QByteArray& frame, int code, const QList<QByteArray>& fields)
{
    return HexFramer::answer(frame.at(idOffset), frame.mid(codeOffset, 2), code, fields);
}

} // namespace

HexProtocol::HexProtocol(Register& device, Outbox& outbox, const Clock& clock)
    : Protocol(device, outbox, clock)
{
}

void HexProtocol::receive(const QByteArray& bytes)
{
    // Byte by byte: a command may tell that a raw block follows in the same piece.
    for (const char byte : bytes) {
        if (!device().isPowered())
            return;
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
    const Fault fault = beginExchange(frame);
    if (fault.mode == FaultMode::Silence)
        return note(exchangeOf(frame, Refusal::None), fault);
    if (fault.isError()) {
        Exchange exchange = exchangeOf(frame, Refusal::None);
        exchange.error = QString::number(fault.argument);
        note(exchange, fault);
        return deliver(frame, answerTo(frame, fault.argument, {}), fault);
    }
    const HexAnswer answer = judge(frame);
    if (answer.blockSize > 0) {
        // The register is ready for the block; the answer comes when it has it.
        m_framer.expectBlock(answer.blockSize);
        m_blockRequest = frame;
        m_blockFault = fault;
        outbox().put(QByteArray(1, HexFramer::acknowledge));
        return;
    }
    reply(frame, answer, fault);
}

void HexProtocol::handleBlock(const QByteArray& block)
{
    const auto misfit = QStringLiteral("the picture is no bitmap of 288 by 100 dots with one bit each");
    reply(m_blockRequest, HexAnswer::judged(device().logo().set(block.mid(1)), misfit), m_blockFault);
}

void HexProtocol::reply(const QByteArray& frame, const HexAnswer& answer, const Fault& fault)
{
    note(exchangeOf(frame, answer), fault);
    deliver(frame, answerTo(frame, answerCode(answer.refusal), answer.fields), fault);
}

Exchange HexProtocol::exchangeOf(const QByteArray& frame, const HexAnswer& answer) const
{
    Exchange exchange;
    exchange.protocol = QStringLiteral("HEX");
    exchange.command = QString::fromLatin1(frame.mid(codeOffset, 2));
    exchange.request = frame;
    const std::optional<int> number = readByte(frame.mid(codeOffset, 2));
    if (const HexCommand* const command = number ? HexCommand::find(*number) : nullptr) {
        exchange.name = QLatin1String(command->name);
        exchange.role = command->roleWith(frame.mid(fieldsOffset).split(HexFramer::separator).constFirst());
    }
    if (answer.refusal != Refusal::None) {
        exchange.error = QString::number(answerCode(answer.refusal));
        const QString why = answer.reason.isEmpty() ? refusalWords(answer.refusal, device()) : answer.reason;
        exchange.reason = QStringLiteral("%1: %2").arg(exchange.command, why);
    }
    return exchange;
}

HexAnswer HexProtocol::judge(const QByteArray& frame)
{
    const qsizetype end = frame.size() - 2;
    if (readByte(frame.mid(end)) != HexFramer::checkValue(frame.mid(1, end - 1)))
        return Refusal::BadCheckValue;
    // A host may have set another one than that of the factory.
    const QString password = device().parameters().text(parameter::password);
    if (frame.mid(passwordOffset, passwordSize) != codepage::fromText(password))
        return Refusal::BadPassword;
    const auto id = static_cast<uchar>(frame.at(idOffset));
    if (isStrict() && (id < lowestId || id > highestId))
        return {Refusal::BadValue, QStringLiteral("packet id 0x%1").arg(id, 2, 16, QLatin1Char('0'))};
    const QByteArray body = frame.mid(fieldsOffset, end - 1 - fieldsOffset);
    QList<QByteArray> list = body.split(HexFramer::separator);
    // Every field is ended by a separator, so what stands behind the last one must be nothing.
    if (!list.takeLast().isEmpty())
        return {Refusal::BadValue, QStringLiteral("the last field has no separator behind it")};
    HexFields fields(list, isStrict());
    return run(frame.mid(codeOffset, 2), fields);
}

HexAnswer HexProtocol::run(const QByteArray& code, HexFields& fields)
{
    const std::optional<int> number = readByte(code);
    const HexCommand* const command = number ? HexCommand::find(*number) : nullptr;
    if (command == nullptr)
        return Refusal::UnknownFunction;
    if (command->started && !device().state().isStarted)
        return {Refusal::WrongState, QStringLiteral("the register was not started, 00 comes first")};
    if (const QString misfit = command->misfit(fields); !misfit.isEmpty())
        return {Refusal::BadValue, misfit};
    HexAnswer answer = command->handler(device(), fields);
    if (fields.isBad())
        answer.reason = QStringLiteral("field %1 is %2: \"%3\"")
                            .arg(fields.firstBad() + 1)
                            .arg(fields.wanted(), shownText(fields.raw(fields.firstBad())));
    else if (answer.refusal == Refusal::BadValue && answer.reason.isEmpty())
        answer.reason
            = QStringLiteral("%1: %2").arg(refusalWords(answer.refusal, device()), shownFields(fields));
    return answer;
}

std::optional<int> HexProtocol::readByte(const QByteArray& digits) const
{
    bool ok = false;
    const int value = digits.toInt(&ok, 16);
    // Upper-case digits are the only ones.
    const bool good = ok && (!isStrict() || digits == HexFramer::twoDigits(value));
    return good ? std::optional<int>(value) : std::nullopt;
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

QByteArray HexProtocol::shaped(const QByteArray& answer, FaultMode mode) const
{
    return hexanswershape::apply(answer, mode);
}

} // namespace emulator
