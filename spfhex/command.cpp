#include "command.h"

#include "abstractserialdriver.h"
#include "answercodes.h"
#include "bytestohexutils.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "frame.h"

#include <log4qt/logger.h>

namespace spfhex {

namespace {

// Every byte has its own time-out, so that a slow device is bound only by the ACK budget.
constexpr unsigned long byteTimeout = 2000;
constexpr int ackBudgetAtStart = 50;
// ETX and the two check digits.
constexpr qint8 tailAtStart = 3;
constexpr int readAttempts = 3;
// No answer comes near it: a device that sends without end must not hold the host for ever.
constexpr int maxBytesARead = 1024 * 1024;

constexpr quint8 firstCommandId = 0x20;
constexpr quint8 commandIdLimit = 0xFE;

QString sendingLabel()
{
    return QStringLiteral("Отправка:");
}

QString receivedLabel()
{
    return QStringLiteral("Получено:");
}

} // namespace

/// What one call of receiveAnswer keeps while it reads.
struct Command::AnswerReader
{
    QByteArray followUp;
    QByteArray answer;
    int ackBudget = ackBudgetAtStart;
    qint8 tail = tailAtStart;
    bool outsideFrame = true;
    bool enqPending = false;

    void take(char byte)
    {
        if (byte == frame::Stx) {
            outsideFrame = false;
        } else if (outsideFrame) {
            return; // line noise before a frame
        } else if (byte == frame::Etx || tail < tailAtStart) {
            --tail;
        }
        answer.append(byte);
    }
};

quint8 Command::commandId = firstCommandId - 1;

Command::Command(AbstractSerialDriver* serialPort, const Log4Qt::Logger* commandLogger)
    : port(serialPort)
    , logger(commandLogger)
{
}

Command::~Command() = default;

QByteArray Command::sendCommand(
    CommandCode code, const QList<QVariant>& fields, const QByteArray& followUp) const
{
    const QByteArray request = formCommand(code, fields);
    trace(sendingLabel(), request);
    port->sendData(request);

    // The request is written once; the attempts only read on past echoes and late answers to earlier
    // requests.
    for (int attempt = 0; attempt < readAttempts; ++attempt) {
        QByteArray answer;
        try {
            answer = receiveAnswer(followUp);
        } catch (const DriverException&) {
            logger->error(QStringLiteral("Ответ от ФР не получен"));
            throw FrNoConnectionException(drivertexts::noConnection());
        }
        trace(receivedLabel(), answer);
        if (answer == request)
            continue;
        if (!isAnswerValid(answer))
            break;
        if (isCurrentAnswer(answer)) {
            checkAnswer(answer);
            return frame::data(answer);
        }
    }
    const QString message = drivertexts::exchangeFailed();
    logger->error(message);
    throw FrCommandException(message);
}

QByteArray Command::formCommand(CommandCode code, const QList<QVariant>& fields) const
{
    return frame::build(getCommandId(), code, fields);
}

quint8 Command::getCommandId() const
{
    const auto next = static_cast<quint8>(commandId + 1);
    commandId = next < commandIdLimit ? next : firstCommandId;
    return commandId;
}

QByteArray Command::receiveAnswer(QByteArray followUp) const
{
    AnswerReader reader;
    reader.followUp = std::move(followUp);
    for (int read = 0; reader.tail != 0; ++read) {
        if (read == maxBytesARead)
            return {};
        receiveByte(reader);
    }
    return reader.answer;
}

void Command::receiveByte(AnswerReader& reader) const
{
    unsigned char byte = 0;
    try {
        byte = port->receiveByte(byteTimeout);
    } catch (const ComDriverException& exception) {
        // A time-out is one of these too: silence and trouble with the port are met alike.
        logger->error(exception.tr().ru());
        askSilentDevice(reader);
        return;
    }
    // An ACK is one wherever it stands: inside a frame it is meant to be lost from it.
    if (byte == frame::Ack)
        takeAck(reader);
    else
        reader.take(static_cast<char>(byte));
}

void Command::askSilentDevice(AnswerReader& reader) const
{
    if (reader.enqPending || !reader.outsideFrame)
        throw FrCommandException(drivertexts::noConnection());
    traceSending(QByteArray(1, static_cast<char>(frame::Enq)));
    port->sendByte(frame::Enq);
    reader.outsideFrame = true;
    reader.enqPending = true;
}

void Command::takeAck(AnswerReader& reader) const
{
    trace(receivedLabel(), QByteArray(1, static_cast<char>(frame::Ack)));
    if (!reader.followUp.isEmpty()) {
        // The ACK that releases the follow-up costs no budget and leaves an open ENQ open.
        trace(sendingLabel(), reader.followUp);
        port->sendData(reader.followUp);
        reader.followUp.clear();
        return;
    }
    if (--reader.ackBudget == 0)
        throw FrCommandException(drivertexts::noConnection());
    reader.enqPending = false;
}

bool Command::isAnswerValid(const QByteArray& answer) const
{
    return frame::isValid(answer);
}

bool Command::isCurrentAnswer(const QByteArray& answer) const
{
    return frame::id(answer) == commandId;
}

void Command::checkAnswer(const QByteArray& answer) const
{
    bool ok = false;
    const int code = frame::answerCode(answer, &ok);
    if (!ok)
        throw FrCommandException(QStringLiteral("Ошибка команды ККМ"));
    if (code == 0)
        return;
    logger->error("Ошибка - %1", code);
    const AnswerCode& info = answerCodeInfo(code);
    const QString text = info.text.toString();
    switch (info.kind) {
    case AnswerCode::Paper:
        throw FrPaperException(text);
    case AnswerCode::ShiftTooLong:
        throw FrShiftTooLongException(text);
    case AnswerCode::Fatal:
        throw FrFatalException(text);
    case AnswerCode::Command:
        break;
    }
    throw FrCommandException(text);
}

QList<QByteArray> Command::queryFields(CommandCode code, const QList<QVariant>& fields) const
{
    return frame::fields(sendCommand(code, fields));
}

void Command::trace(const QString& label, const QByteArray& bytes) const
{
    if (logger->isTraceEnabled())
        logger->trace(label + QLatin1Char(' ') + bytestohexutils::bytesToHexWithSpacesStr(bytes));
}

void Command::traceSending(const QByteArray& bytes) const
{
    trace(sendingLabel(), bytes);
}

} // namespace spfhex
